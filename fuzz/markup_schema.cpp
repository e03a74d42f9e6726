// Any bytes as the definition that a page is read by, and any bytes as the page, with a
// filter typed in steps and taken back: lists stay whole.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "Invariants.h"

using namespace caretwell;
using namespace caretwell::test;

namespace {

void Require(const std::string& fault) {
    if (fault.empty()) return;
    std::fprintf(stderr, "fault: %s\n", fault.c_str());
    std::abort();
}

/// A schema folder of which the input fills the one file that a page is read by.
class TFolder {
public:
    TFolder() {
        std::string pattern = std::filesystem::temp_directory_path() / "markupXXXXXX";
        if (!mkdtemp(pattern.data())) std::abort();
        FFolder = pattern + "/";
    }
    ~TFolder() { std::filesystem::remove_all(FFolder); }
    const std::string& Fill(std::string_view text) {
        for (const char* name : {"loose.dtd", "xsl.dtd"})
            std::ofstream(FFolder + name, std::ios::binary)
                .write(text.data(), static_cast<std::streamsize>(text.size()));
        return FFolder;
    }

private:
    std::string FFolder;
};

/// Types a filter into the open list and takes it back, a unit at a time.
void FilterInSteps(TTestHost& host, std::u16string_view filter) {
    for (size_t i = 0; i <= 2 * filter.size(); ++i) {
        auto part = filter.substr(0, i <= filter.size() ? i : 2 * filter.size() - i);
        host.Manager().SetFilter(part);
        Require(FaultOfList(host, part));
    }
}

}  // namespace

/// Two bytes of the caret, one of options; definition, filter and page stand between form feeds.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static TFolder folder;
    if (size < 3) return 0;
    std::string_view rest(reinterpret_cast<const char*>(data) + 3, size - 3);
    auto next = [&rest] {
        std::string_view part = rest.substr(0, rest.find('\f'));
        rest.remove_prefix(std::min(part.size() + 1, rest.size()));
        return part;
    };
    THostOptions options;
    options.SchemaFolder = folder.Fill(next());
    std::u16string filter = ToUtf16(next().substr(0, 12));
    std::string page(rest);

    TTestHost host(std::move(options));
    host.OpenBytes(page, data[2] & 1 ? "page.xsl" : "page.html");
    auto first = static_cast<int32_t>((data[0] * 256u + data[1]) % (page.size() + 1));
    for (int32_t caret : {first, static_cast<int32_t>(page.size()), 0}) {
        host.Document().View().SetCaretOffset(caret);
        host.Driver().OpenList();
        if (!host.Document().Text().CanUndo()) Require(FaultOfParse(host));
        if (host.Driver().IsOpen()) {
            Require(FaultOfList(host, host.Driver().Filter()));
            int32_t length = host.Document().Text().Size();
            for (int32_t i = 0; i < std::min(host.Driver().ItemCount(), 20); ++i)
                Require(FaultOfEdit(host.Manager(), i, 0, length));
            FilterInSteps(host, filter);
        }
        host.Driver().Dismiss();
    }
    return 0;
}
