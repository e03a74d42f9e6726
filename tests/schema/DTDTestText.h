// Definitions as text in, what the reader made of them as text out.
#pragma once

#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "schema/DTDParser.h"

namespace caretwell {

/// A parser with what it said: "line: message", and before it "!" if that is a failure, and
/// the file's name but for "main".
struct TDTDRun {
    TDTDParser Parser;
    std::vector<std::string> Messages;

    TDTDRun() {
        Parser.OnError = [this](TDTDParser*, TParseError severity, const std::string& message, int32_t line,
                                const std::string& file) {
            std::string name = file.substr(file.find_last_of('/') + 1) + ":";
            if (name == ":" || name == "main:") name.clear();
            if (severity == peFailure) name = "!" + name;
            Messages.push_back(name + std::to_string(line) + ": " + message);
        };
    }
    explicit TDTDRun(const std::string& text) : TDTDRun() {
        std::istringstream stream(text);
        Parser.LoadFromStream(stream);
    }

    std::string AllMessages() const {
        std::string all;
        for (const auto& message : Messages) all += (all.empty() ? "" : "\n") + message;
        return all;
    }
    TDTDElement* Element(std::string_view name) {
        return SymbolAs<TDTDElement>(Parser.LookupSymbol(name, dtElement));
    }
};

/// A tree as it was written, "a,(b|c),d?"; the mark of a closing parenthesis stands on
/// the first item inside it.
inline std::string ShowExpr(const TDTDExprNode* node) {
    static constexpr const char* Marks[] = {"", "*", "+", "?"};
    static constexpr const char* Connectors[] = {"", "|", ",", "&"};
    std::string text;
    for (; node; node = node->Right) {
        if (node->Symbol) text += node->Symbol->FName;
        text += Marks[node->FAttr];
        text += Connectors[node->FOp];
        if (node->Left) text += "(" + ShowExpr(node->Left) + ")";
    }
    return text;
}

/// "ul -O [li+]"; then E (empty) or A (any), exceptions, attributes with "!" if
/// required and "=value" if fixed and "@editor"; the entities that it came from.
inline std::string ShowElement(TDTDElement* element) {
    if (!element) return "none";
    std::string text(element->FName);
    text +=
        std::string(" ") + (element->FRequiresStartTag ? '-' : 'O') + (element->FRequiresEndTag ? '-' : 'O');
    TDTDExprList& list = element->GetExprList();
    text += " [" + ShowExpr(list.GetExpr(0)) + "]";
    if (element->FEmpty) text += "E";
    if (element->FAny) text += "A";
    if (element->FInclusions) text += " +" + ShowExpr(element->FInclusions);
    if (element->FExclusions) text += " -" + ShowExpr(element->FExclusions);
    for (int32_t i = 1; i < list.GetCount(); ++i) {
        auto* attribute = SymbolAs<TDTDAttribute>(list.GetExpr(i)->Symbol);
        if (!attribute) continue;
        text += " " + std::string(attribute->FName) + ":" + ShowExpr(list.GetExpr(i)->Right);
        if (attribute->FAttrs && attribute->FAttrs->Required) text += "!";
        if (attribute->FAttrs && attribute->FAttrs->Fixed)
            text += "=" + std::string(attribute->FAttrs->FixedValue);
        if (!attribute->FEditor.empty()) text += "@" + std::string(attribute->FEditor);
    }
    for (auto entity : element->GetEntity()) text += " %" + std::string(entity);
    return text;
}

}  // namespace caretwell
