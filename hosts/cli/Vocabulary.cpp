#include "cli/Vocabulary.h"

namespace caretwell {
namespace {

template <class TFlagSet, class E, size_t Count>
std::vector<std::string_view> Collect(TFlagSet flags, const std::string_view (&names)[Count]) {
    std::vector<std::string_view> result;
    for (size_t i = 0; i < Count; ++i)
        if (flags.Has(static_cast<E>(i))) result.push_back(names[i]);
    return result;
}

}  // namespace

std::string_view NameOf(TKibitzMode mode) {
    static constexpr std::string_view names[] = {"kmHTML", "kmXSL", "kmWML", "kmResX", "kmXML"};
    return names[mode];
}

std::string_view NameOf(TTagType type) {
    static constexpr std::string_view names[] = {"ttComment",
                                                 "ttAttribute",
                                                 "ttOpen",
                                                 "ttClose",
                                                 "ttSingleLine",
                                                 "ttServerScript",
                                                 "ttProcessingInstruction",
                                                 "ttText",
                                                 "ttDocType",
                                                 "ttDirective",
                                                 "ttAspComment",
                                                 "ttEntity"};
    return names[type];
}

std::vector<std::string_view> NamesOf(TParserContext contexts) {
    static constexpr std::string_view names[] = {
        "pcNone",   "pcHTMLComment", "pcStyle",  "pcScript", "pcProcessingInstruction", "pcServerSideScript",
        "pcString", "pcAspComment",  "pcElement"};
    return Collect<TParserContext, TParserContexts>(contexts, names);
}

std::vector<std::string_view> NamesOf(INibMLTagFlags flags) {
    static constexpr std::string_view names[] = {"tfGlobal", "tfASPDirective"};
    return Collect<INibMLTagFlags, INibMLTagFlag>(flags, names);
}

void AddLanguage(TJson& json, TEngine& engine, TDocument& document) {
    auto manager = document.Driver().Manager();
    if (!manager) return;
    if (IsStyleSheetManager(*manager)) {
        json["schema"] = engine.SchemaFolder() + "css.xml";
        return;
    }
    TMLSymbolManager& symbols = engine.Symbols();
    json["mode"] = NameOf(symbols.GetKibitzMode());
    if (!symbols.GetSchemaFile().empty()) json["schema"] = symbols.GetSchemaFile();
}

}  // namespace caretwell
