// Measures everything and prints the table. The options of Google Benchmark apply:
// --benchmark_filter=keystroke, say. --plain prints its own report instead.
#include <cstdio>
#include <cstring>

#include "bench/Measure.h"
#include "bench/PageGenerator.h"
#include "bench/Table.h"

namespace {

using namespace caretwell::bench;

constexpr size_t PageSizes[] = {10'000, 100'000, 1'000'000, 10'000'000};
constexpr size_t SheetSizes[] = {10'000, 100'000, 1'000'000};

// Two tables compare only if these lines do.
void PrintPages() {
    std::printf("%-24s %10s %8s  %s\n", "document", "bytes", "tags", "checksum");
    auto print = [](const char* name, const TPage& page) {
        std::printf("%-24s %10zu %8zu  %016llx\n", name, page.Text.size(), page.Tags,
                    static_cast<unsigned long long>(Checksum(page.Text)));
    };
    for (size_t bytes : PageSizes) print("tag-dense page", MakePage(pkTagDense, bytes));
    print("text-heavy page", MakePage(pkTextHeavy, 1'000'000));
    print("10,000 open tags", MakeOpenTags(10'000));
    for (size_t bytes : SheetSizes) print("plain style sheet", MakeSheet(skPlain, bytes));
    for (size_t bytes : SheetSizes) print("style sheet of today", MakeSheet(skToday, bytes));
    std::printf("\n");
}

}  // namespace

int main(int count, char** words) {
    bool isPlain = count > 1 && std::strcmp(words[1], "--plain") == 0;
    if (isPlain) words[1] = words[0], ++words, --count;
    benchmark::Initialize(&count, words);
    if (benchmark::ReportUnrecognizedArguments(count, words)) return 2;
    RegisterScans();
    RegisterKeystrokes();
    RegisterGrammar();
    RegisterChoices();
    RegisterSheets();
    RegisterSchemas();
    RegisterSwitches();
    RegisterProcesses();
    if (isPlain) {
        benchmark::RunSpecifiedBenchmarks();
        return 0;
    }
    PrintPages();
    TTable table;
    benchmark::RunSpecifiedBenchmarks(&table);
}
