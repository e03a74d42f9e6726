// Does a page close what it opens? Read by rules of its own, so that it can judge the engine.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace caretwell::test {

struct TBalance {
    bool IsClosed = true;  ///< every element that is opened is closed, in order
    std::string Piece;     ///< the largest run of one element that is, up to 4,000 bytes; may be empty
    size_t Middle = 0;     ///< a place between two tags about the middle of the text
};

namespace balance {

inline std::string Lower(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
    return lower;
}

/// Behind what opens at `at` and is no tag; 0 if a tag opens there.
inline size_t SkipRegion(std::string_view text, size_t at) {
    const struct {
        std::string_view Open, Close;
    } regions[] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<%", "%>"}, {"<?", "?>"}, {"<!", ">"}};
    for (const auto& region : regions) {
        if (text.substr(at, region.Open.size()) != region.Open) continue;
        size_t end = text.find(region.Close, at + region.Open.size());
        return end == text.npos ? text.size() : end + region.Close.size();
    }
    return 0;
}

/// Behind the ">" that ends the tag at `at`; quoted values and server code hide theirs.
inline size_t SkipTag(std::string_view text, size_t at) {
    char quote = 0;
    for (; at < text.size(); ++at) {
        if (text.substr(at, 2) == "<%") at = SkipRegion(text, at) - 1;
        else if (quote) quote = text[at] == quote ? '\0' : quote;
        else if (text[at] == '"' || text[at] == '\'') quote = text[at];
        else if (text[at] == '>') return at + 1;
    }
    return text.size();
}

inline bool IsVoid(std::string_view name) {
    return std::string_view(" area base br col embed hr img input link meta param source track wbr ")
               .find(" " + std::string(name) + " ") != std::string_view::npos;
}

}  // namespace balance

inline TBalance ReadBalance(std::string_view text, std::string_view kind) {
    using namespace balance;
    TBalance result;
    bool isHtml = (kind == ".html" || kind == ".htm") && text.find("XHTML") == text.npos;
    isHtml = isHtml || kind == ".aspx" || kind == ".ascx" || kind == ".master";
    struct TOpen {
        std::string Name;
        size_t Start;
    };
    std::vector<TOpen> open;
    for (size_t at = text.find('<'); at < text.size(); at = text.find('<', at)) {
        if (size_t end = SkipRegion(text, at)) {
            at = end;
            continue;
        }
        bool isClosing = text.substr(at, 2) == "</";
        size_t start = at, name = at + 1 + isClosing;
        size_t nameEnd = std::min(text.find_first_of(" \t\n/><", name), text.size());
        std::string tag(text.substr(name, nameEnd - name));
        if (isHtml) tag = Lower(tag);
        at = tag.empty() ? at + 1 : SkipTag(text, at);
        if (tag.empty()) continue;
        if (result.Middle < text.size() / 2) result.Middle = at;
        if (isClosing) {
            bool isMatch = !open.empty() && open.back().Name == tag;
            result.IsClosed = result.IsClosed && isMatch;
            if (!isMatch) continue;
            size_t length = at - open.back().Start;
            bool isWanted = result.IsClosed && length <= 4000 && length > result.Piece.size();
            if (isWanted) result.Piece = text.substr(open.back().Start, length);
            open.pop_back();
        } else if (text.substr(at - 2, 2) != "/>" && !(isHtml && IsVoid(tag))) {
            open.push_back({tag, start});
            bool isRaw = isHtml && (tag == "script" || tag == "style" || tag == "textarea");
            if (isRaw) at = std::min(text.find("</" + tag, at), text.size());
        }
    }
    result.IsClosed = result.IsClosed && open.empty();
    return result;
}

}  // namespace caretwell::test
