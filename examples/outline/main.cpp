// Prints the headings of a page as an outline.
//
//     outline SCHEMAS PAGE
//
// A parse tells every observer what it finds, in the order of the document, up to the
// caret. So a program that wants the structure of a page needs no editor: no view, no
// services, only a producer that reads the file and a caret that lies after its end.
#include <caretwell/host/Platform.h>
#include <caretwell/insight/MLCodeInsight.h>
#include <caretwell/package/HTMReg.h>

#include <fstream>
#include <iostream>
#include <limits>
#include <string>
#include <vector>

namespace {

using namespace caretwell;

class TOutline final : public TImplements<INibMLElementCallback> {
public:
    // Elements and texts come one after the other: what stands between the beginning of a
    // heading and its end is its text.
    void ElementParsed(void*, INibMLMarkupPos* element, TTagType type, int32_t offsetStart, int32_t,
                       bool&) override {
        if (type == ttText && FLevel > 0) {
            if (auto text = QueryAs<INibMLText>(element)) FText += ToUtf8(text->GetText());
            return;
        }
        if (type != ttOpen && type != ttClose) return;
        int level = LevelOf(element);
        if (level == 0) return;
        EndHeading();
        if (type == ttOpen) {
            FLevel = level;
            FStart = offsetStart;
        }
    }

    // The page asked for another schema than the one at hand: what was told so far was
    // told by the wrong one.
    void Invalidate() override {
        FLines.clear();
        FLevel = 0;
        FIsValid = false;
    }

    /// The lines, if they can be trusted; otherwise the page is to be parsed again.
    bool Finish() {
        EndHeading();
        return std::exchange(FIsValid, true);
    }
    const std::vector<std::string>& Lines() const { return FLines; }

private:
    /// 1 to 6 for a heading, otherwise 0.
    static int LevelOf(INibMLMarkupPos* element) {
        auto tag = QueryAs<INibMLTag>(element);
        std::u16string_view name = tag ? tag->GetName() : std::u16string_view();
        bool isHeading = name.size() == 2 && (name[0] | 0x20) == u'h' && name[1] >= u'1' && name[1] <= u'6';
        return isHeading ? name[1] - u'0' : 0;
    }

    // A heading that was never closed ends with the next one.
    void EndHeading() {
        if (FLevel == 0) return;
        FLines.push_back(std::string(static_cast<size_t>(FLevel - 1) * 2, ' ') + Trimmed(FText) + "  @" +
                         std::to_string(FStart));
        FText.clear();
        FLevel = 0;
    }

    static std::string Trimmed(const std::string& text) {
        std::string result;
        for (char c : text) {
            bool isBlank = c == ' ' || c == '\n' || c == '\t' || c == '\r';
            if (!isBlank) result += c;
            else if (!result.empty() && result.back() != ' ') result += ' ';
        }
        if (result.ends_with(' ')) result.pop_back();
        return result;
    }

    std::vector<std::string> FLines;
    std::string FText;
    int FLevel = 0;
    int32_t FStart = 0;
    bool FIsValid = true;
};

void ParseFile(INibMLCodeInsightManager& manager, const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    constexpr TNibEditPos BehindEverything{1, std::numeric_limits<int32_t>::max()};
    manager.Parse(BehindEverything, MakeRef<TMLBufferProducer>(file, name, 0), nullptr);
}

void PrintOutline(const std::string& name) {
    auto manager = MarkupLanguageManager();
    auto parse = QueryAs<INibMLParse>(manager);
    auto outline = MakeRef<TOutline>();
    parse->AddCallback(outline.Get());
    do ParseFile(*manager, name);
    while (!outline->Finish());
    parse->RemoveCallback(outline.Get());
    for (const auto& line : outline->Lines()) std::cout << line << "\n";
}

}  // namespace

int main(int count, char** words) {
    if (count != 3 || !std::ifstream(words[2])) {
        std::cerr << "outline SCHEMAS PAGE: a folder of schemas and a page that can be read are wanted\n";
        return 2;
    }
    auto platform = MakePlatform({.SchemaFolder = words[1]});
    SetPlatform(platform.get());
    Initialize();
    PrintOutline(words[2]);
    Finalize();
    SetPlatform(nullptr);
}
