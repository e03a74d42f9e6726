// Opens the list at caret after caret of real pages and checks what must hold:
//
//     caret_sweep [--schemas FOLDER] [--step N] FILE...
//
// every Nth byte offset of every file (each one if left out), all items of each list read,
// the edit of each 50th item composed. A line for each file, one for all; exit status 1 if
// anything was wrong.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "Invariants.h"

using namespace caretwell;
using namespace caretwell::test;

namespace {

struct TCounts {
    int64_t Carets = 0, Lists = 0, Items = 0, Edits = 0, Faults = 0;
    void Add(const TCounts& other) {
        Carets += other.Carets;
        Lists += other.Lists;
        Items += other.Items;
        Edits += other.Edits;
        Faults += other.Faults;
    }
};

class TSweep {
public:
    TSweep(std::string file, std::string schemas) : FFile(std::move(file)) {
        std::ifstream stream(FFile, std::ios::binary);
        FText.assign(std::istreambuf_iterator<char>(stream), {});
        THostOptions options;
        options.SchemaFolder = std::move(schemas);
        FHost = std::make_unique<TTestHost>(std::move(options));
        FHost->OpenBytes(FText, FFile.c_str());
    }

    TCounts Run(int32_t step) {
        for (int32_t caret = 0; caret <= static_cast<int32_t>(FText.size()); caret += step) Visit(caret);
        return FCounts;
    }

private:
    void Note(int32_t caret, const std::string& fault) {
        if (fault.empty()) return;
        ++FCounts.Faults;
        std::printf("%s:%d: %s\n", FFile.c_str(), caret, fault.c_str());
    }

    void Visit(int32_t caret) {
        TEditorDriver& driver = FHost->Driver();
        TTextBuffer& text = FHost->Document().Text();
        FHost->Document().View().SetCaretOffset(caret);
        ++FCounts.Carets;
        FCounts.Lists += driver.OpenList();
        // A typing aid that has closed empty elements leaves the parse after the text.
        if (!text.CanUndo()) Note(caret, FaultOfParse(*FHost));
        if (driver.IsOpen()) Note(caret, FaultOfList(*FHost, driver.Filter()));
        for (int32_t i = 0; i < driver.ItemCount(); ++i) {
            if (FCounts.Items++ % 50) continue;
            ++FCounts.Edits;
            Note(caret, FaultOfEdit(FHost->Manager(), i, 0, text.Size()));
        }
        driver.Dismiss();
        if (!text.CanUndo()) return;
        while (driver.Undo()) continue;
        if (text.Text() != FText) Note(caret, "text after undo");
    }

    std::string FFile, FText;
    std::unique_ptr<TTestHost> FHost;
    TCounts FCounts;
};

void Print(const std::string& what, const TCounts& counts, double seconds) {
    std::printf("%-48s %9lld carets %8lld lists %10lld items %8lld edits %4lld faults %8.1f s\n",
                what.c_str(), static_cast<long long>(counts.Carets), static_cast<long long>(counts.Lists),
                static_cast<long long>(counts.Items), static_cast<long long>(counts.Edits),
                static_cast<long long>(counts.Faults), seconds);
    std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
    std::string schemas = CARETWELL_SOURCE_DIR "/schemas";
    int32_t step = 1;
    TCounts all;
    int files = 0;
    auto clock = [] { return std::chrono::steady_clock::now(); };
    auto since = [&](auto start) { return std::chrono::duration<double>(clock() - start).count(); };
    auto start = clock();
    for (int i = 1; i < argc; ++i) {
        std::string word = argv[i];
        if (word == "--schemas" && i + 1 < argc) {
            schemas = argv[++i];
        } else if (word == "--step" && i + 1 < argc) {
            step = std::max(1, std::atoi(argv[++i]));
        } else {
            auto fileStart = clock();
            TCounts counts = TSweep(word, schemas).Run(step);
            Print(word, counts, since(fileStart));
            all.Add(counts);
            ++files;
        }
    }
    Print(std::to_string(files) + " files", all, since(start));
    return all.Faults ? 1 : 0;
}
