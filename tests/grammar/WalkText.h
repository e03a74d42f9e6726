// A grammar out of a definition as text, and what it answers at the end of a few tags.
#pragma once

#include <sstream>
#include <string>
#include <string_view>

#include "grammar/Answer.h"
#include "grammar/DTDGrammar.h"
#include "schema/DTDParser.h"

namespace caretwell {

/// The tags of a text in a log; those from "^" on stand after the caret.
inline void LogTags(TTagLog& log, std::string_view text) {
    log.Begin({});
    bool isBefore = true;
    for (size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '^') isBefore = false;
        if (text[at] != '<') continue;
        bool isClosing = text.substr(at + 1).starts_with('/');
        size_t from = at + (isClosing ? 2 : 1);
        size_t to = text.find_first_of("/> ", from);
        std::string_view name = text.substr(from, to - from);
        log.AddTag(MakeNameKey(name), name, isClosing, static_cast<int32_t>(at), isBefore);
        if (to != text.npos && text[to] == '/') log.AddEmpty(static_cast<int32_t>(at), isBefore);
    }
}

/// "now | elsewhere | closable", with "!" after what is required and "~" in front if it is not exact.
inline std::string Show(const TGrammarAnswer& answer) {
    std::string text = answer.IsExact ? "" : "~";
    for (const std::string& name : answer.Now) {
        bool isRequired = std::ranges::find(answer.Required, name) != answer.Required.end();
        text += name + (isRequired ? "! " : " ");
    }
    text += "|";
    for (const std::string& name : answer.Elsewhere) text += " " + name;
    text += " |";
    for (const TClosableElement& element : answer.Closable) text += " " + element.Name;
    return text;
}

inline std::string AnswerOf(TGrammar& grammar, std::string_view document, bool isXML) {
    TTagLog log;
    LogTags(log, document);
    TWalk walk(grammar);
    walk.Begin(log, isXML, NoName);
    walk.Read(log, 0, log.GetCountBeforeCaret());
    return Show(Answer(walk, log, log.GetCountBeforeCaret()));
}

/// A definition read from text, with its grammar.
struct TDTDText {
    explicit TDTDText(const std::string& text) {
        std::istringstream stream(text);
        Parser.LoadFromStream(stream);
        Parser.MakeSymArray();
        Grammar.emplace(Parser);
    }
    std::string At(std::string_view document, bool isXML = false) {
        return AnswerOf(*Grammar, document, isXML);
    }

    TDTDParser Parser;
    std::optional<TDTDGrammar> Grammar;
};

}  // namespace caretwell
