// Any bytes as a definition, and as a file that it includes: reading ends, all that is
// linked can be walked, and every message is one line with a place.
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "host/Platform.h"
#include "schema/DTDParser.h"

using namespace caretwell;

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

/// A schema folder with the files that an input can name: "part", which the input
/// itself fills, and "self", which includes itself and the part.
class TFolder {
public:
    TFolder() {
        std::string pattern = std::filesystem::temp_directory_path() / "dtdXXXXXX";
        Require(mkdtemp(pattern.data()));
        FFolder = pattern + "/";
        FPlatform = MakePlatform({.SchemaFolder = FFolder});
        SetPlatform(FPlatform.get());
        Write("self", "<!ENTITY % s PUBLIC 'self'><!ENTITY % p PUBLIC 'part'>%s;%p;x|y");
    }
    ~TFolder() {
        SetPlatform(nullptr);
        std::filesystem::remove_all(FFolder);
    }
    void Write(const char* name, std::string_view text) {
        std::ofstream(FFolder + name, std::ios::binary)
            .write(text.data(), static_cast<std::streamsize>(text.size()));
    }

private:
    std::string FFolder;
    std::unique_ptr<IPlatform> FPlatform;
};

void Walk(TDTDExprNode* root) {
    size_t nodes = 0;
    TDTDExprWalk walk(root);
    while (walk.Next()) Require(++nodes <= TDTDParser::MaxExprs + size_t{TDTDScanner::BlockSize});
}

void CheckElement(TDTDElement& element) {
    TDTDExprList& list = element.GetExprList();
    Walk(list.GetExpr(0));
    Walk(element.FInclusions);
    Walk(element.FExclusions);
    for (int32_t i = 1; i < list.GetCount(); ++i) {
        if (i < 8) Walk(list.GetExpr(i)->Right);
        auto* attribute = SymbolAs<TDTDAttribute>(list.GetExpr(i)->Symbol);
        if (!attribute) continue;
        Require(attribute->FAttrs && element.LookupSymbol(attribute->FName)->FName == attribute->FName);
    }
    for (std::string_view name : element.GetEntity()) Require(!name.empty());
}

void CheckMessage(const std::string& message, int32_t line) {
    Require(line >= 1 && ToUtf8(ToUtf16(message)) == message);
    for (char c : message) Require(static_cast<uint8_t>(c) >= ' ');
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static TFolder folder;
    std::string_view text(reinterpret_cast<const char*>(data), size);
    // Behind the first form feed stands the included file.
    size_t cut = text.find('\f');
    folder.Write("part", cut == text.npos ? std::string_view() : text.substr(cut + 1));
    std::istringstream stream{std::string(text.substr(0, cut))};

    TDTDParser parser;
    parser.FKibitzMode = size % 2 ? kmHTML : kmXML;
    parser.OnError = [](TDTDParser*, TParseError, const std::string& message, int32_t line,
                        const std::string&) { CheckMessage(message, line); };
    try {
        parser.LoadFromStream(stream);
    } catch (const EDTDParserError&) {
    }
    for (int32_t i = 0; i < parser.FSymbolCount; ++i) {
        TDTDSymbol* symbol = parser.GetSymbol(i);
        Require(!symbol->FName.empty());
        if (auto* element = SymbolAs<TDTDElement>(symbol)) CheckElement(*element);
        if (symbol->FKind != dtAttribute)
            Require(parser.LookupSymbol(symbol->FName, symbol->FKind) == symbol);
    }
    return 0;
}
