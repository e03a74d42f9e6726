// Types real files key by key into the embedded host, taking nothing from a list, and
// compares: what is typed by hand must come out as it was typed.
//
//     typed_by_hand [--schemas FOLDER] [--map .EXT=SCHEMA]... [--limit BYTES] [--places N] [--show N] FILE...
//
// Each file is typed from nothing, and the largest piece of it that closes what it opens
// into the middle of the file before it and at N places drawn by chance (1), with the typing
// aids off, on, and on with quotes; then undo takes all of it back. Files beyond the limit
// (50,000) are passed over. A table of shares for each kind of file, in front of it the first
// difference of up to N failures each; exit status 1 if anything failed with the aids off, or
// a file that closes what it opens with them on. Of values without quotes nothing is asked
// where quotes come by themselves.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>

#include "Balance.h"
#include "cli/Engine.h"
#include "cli/Failure.h"
#include "markup/Text.h"

using namespace caretwell;
using namespace caretwell::test;

namespace {

struct TWork {
    std::string Name;  // as the engine reads it
    std::string Before, Typed, After;
    bool IsClosed = false;  // closes what it opens
};

enum class TAids { Bare, On, Quotes };
constexpr const char* AidNames[] = {", bare", ", aids", ", quotes"};

struct TShare {
    int Count = 0, Right = 0;
    void Add(bool isRight) {
        ++Count;
        Right += isRight;
    }
};

// Rows of the table: kind, then the way of typing.
using TShares = std::map<std::string, std::map<std::string, TShare>>;

// Breaks become LF, which is what Enter writes into a document without any. Empty if the
// file cannot be typed at all: bytes that are no characters, or control characters.
std::string ReadTypable(const std::string& file) {
    if (!std::filesystem::is_regular_file(file)) return {};
    std::ifstream stream(file, std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(stream), {}}, text;
    for (size_t i = 0; i < bytes.size(); ++i) {
        auto c = static_cast<unsigned char>(bytes[i]);
        if (c == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n') continue;
        if (c < 32 && c != '\n' && c != '\r' && c != '\t') return {};
        text += c == '\r' ? '\n' : bytes[i];
    }
    return ToUtf8(ToUtf16(text)) == text ? text : std::string();
}

class TTypist {
public:
    TTypist(TEngine& engine, int show) : FEngine(engine), FShow(show) {}

    void Type(const TWork& work, std::string_view kind, std::string_view way, TAids aids) {
        bool hasAids = aids != TAids::Bare;
        FEngine.Host().Settings().Override("Auto Code Completions", hasAids ? "True" : "False");
        FEngine.Markup().SetAutoQuote(aids == TAids::Quotes);
        TDocument& document = FEngine.Open(work.Before + work.After, work.Name);
        document.View().SetCaretOffset(static_cast<int32_t>(work.Before.size()));
        Keys(document, ToUtf16(work.Typed));
        std::string result = document.Text().Text(), expected = work.Before + work.Typed + work.After;
        auto caret = static_cast<size_t>(document.View().CaretOffset());
        bool isRight = result == expected && caret == work.Before.size() + work.Typed.size();
        document.Driver().Dismiss();
        while (document.Driver().Undo()) continue;
        bool isUndone = document.Text().Text() == work.Before + work.After;
        FEngine.Host().CloseDocument(document);

        std::string row = std::string(way) + AidNames[static_cast<size_t>(aids)];
        if (hasAids) row += work.IsClosed ? ", closed" : ", open";
        FShares[std::string(kind)][row].Add(isRight);
        FShares[std::string(kind)]["undone"].Add(isUndone);
        HasFailed = HasFailed || !isUndone || (!isRight && (!hasAids || work.IsClosed));
        if (!isRight && FShown[std::string(kind) + row]++ < FShow) Show(work.Name, row, expected, result);
        if (!isUndone) std::printf("%s: %s: undo leaves another text\n", work.Name.c_str(), row.c_str());
    }

    void Print() const {
        for (const auto& [kind, rows] : FShares)
            for (const auto& [way, share] : rows)
                std::printf("%-8s %-24s %5d of %5d  %5.1f %%\n", kind.c_str(), way.c_str(), share.Right,
                            share.Count, 100.0 * share.Right / share.Count);
    }
    bool HasFailed = false;

private:
    // A person who wants a break or a tab, and sees that the key would take an item, closes the list first.
    static void Keys(TDocument& document, const std::u16string& keys) {
        TEditorDriver& driver = document.Driver();
        for (size_t i = 0; i < keys.size(); ++i) {
            char32_t c = keys[i];
            if (c >= 0xD800 && c < 0xDC00) c = 0x10000 + ((c - 0xD800) << 10) + (keys[++i] - 0xDC00u);
            char32_t key = c == '\n' ? TTypingSession::KeyEnter : c;
            if ((c == '\n' || c == '\t') && driver.Takes(key)) driver.PressKey(ekEscape);
            driver.TypeChar(c);
        }
    }

    static void Show(const std::string& name, const std::string& row, const std::string& expected,
                     const std::string& result) {
        size_t at = 0;
        while (at < expected.size() && at < result.size() && expected[at] == result[at]) ++at;
        auto piece = [&](const std::string& text) {
            size_t start = at > 50 ? at - 50 : 0;
            std::string line = text.substr(start, at - start) + "|" +
                               text.substr(at, std::min<size_t>(50, text.size() - at));
            for (char& c : line)
                if (c == '\n') c = '~';
            return line;
        };
        std::printf("%s: %s\n  typed %s\n  is    %s\n", name.c_str(), row.c_str(), piece(expected).c_str(),
                    piece(result).c_str());
    }

    TEngine& FEngine;
    int FShow;
    TShares FShares;
    std::map<std::string, int> FShown;
};

struct TCall {
    TEngineOptions Options;
    size_t Limit = 50000;
    int Show = 3, Places = 1;
    std::vector<std::string> Files;
};

TCall ReadCall(int count, char** words) {
    TCall call;
    for (int i = 1; i < count; ++i) {
        std::string_view word = words[i];
        const char* value = i + 1 < count ? words[i + 1] : "";
        if (word.starts_with("--")) ++i;
        if (word == "--schemas") call.Options.SchemaFolder = value;
        else if (word == "--limit") call.Limit = std::strtoul(value, nullptr, 10);
        else if (word == "--show") call.Show = std::atoi(value);
        else if (word == "--places") call.Places = std::atoi(value);
        else if (word == "--map" && std::strchr(value, '='))
            call.Options.Maps.emplace_back(std::string(value, std::strchr(value, '=')),
                                           std::strchr(value, '=') + 1);
        else call.Files.emplace_back(word);
    }
    return call;
}

std::string KindOf(const std::string& file) {
    size_t point = file.rfind('.');
    return point == std::string::npos ? std::string() : file.substr(point);
}

// A piece of a page in the middle of an XHTML page has to close all that it opens.
std::string KindWithin(const std::string& host, const std::string& kind) {
    return host.find("XHTML") == host.npos ? kind : ".xml";
}

// A tag with an "=" that no quote follows.
bool HasPlainValue(std::string_view text) {
    for (size_t at = text.find('<'); at < text.size(); at = text.find('<', at)) {
        if (size_t end = balance::SkipRegion(text, at)) {
            at = end;
            continue;
        }
        size_t end = balance::SkipTag(text, at);
        char quote = 0;
        for (; at < end; ++at) {
            if (quote) quote = text[at] == quote ? '\0' : quote;
            else if (text[at] == '"' || text[at] == '\'') quote = text[at];
            if (quote || text[at] != '=') continue;
            size_t value = std::min(text.find_first_not_of(" \t\n", at + 1), text.size() - 1);
            if (text[value] != '"' && text[value] != '\'') return true;
        }
    }
    return false;
}

bool HasTagInValue(std::string_view text) {
    for (size_t at = text.find('<'); at != text.npos; at = text.find('<', at + 1)) {
        size_t next = text.find_first_of("<>", at + 1);
        if (next != text.npos && text[next] == '<') return true;
    }
    return false;
}

// A place between two characters.
size_t PlaceIn(std::string_view text, size_t chance) {
    size_t place = chance % (text.size() + 1);
    while (place < text.size() && (text[place] & 0xC0) == 0x80) ++place;
    return place;
}

}  // namespace

int main(int count, char** words) try {
    TCall call = ReadCall(count, words);
    TEngine engine(call.Options);
    TTypist typist(engine, call.Show);
    std::map<std::string, std::string> hosts;  // the file before, for each kind
    auto start = std::chrono::steady_clock::now();
    int passed = 0;
    std::mt19937 chance(1);
    for (const auto& file : call.Files) {
        std::string text = ReadTypable(file), kind = KindOf(file);
        if (text.empty() || text.size() > call.Limit) {
            ++passed;
            continue;
        }
        bool isMarkup = !engine.IsStyleSheet(file);
        TBalance balance = isMarkup ? ReadBalance(text, kind) : TBalance{true, text, text.size() / 2};
        TWork whole{file, {}, text, {}, balance.IsClosed};
        std::string& host = hosts[kind];
        if (host.empty()) host = text;
        size_t middle = isMarkup ? ReadBalance(host, kind).Middle : host.size() / 2;
        TWork piece{file, host.substr(0, middle), balance.Piece, host.substr(middle), true};
        if (isMarkup && !piece.Typed.empty())
            piece.IsClosed = ReadBalance(balance.Piece, KindWithin(host, kind)).IsClosed;
        for (TAids aids : {TAids::Bare, TAids::On, TAids::Quotes}) {
            if (aids == TAids::Quotes && (!isMarkup || HasPlainValue(text))) continue;
            typist.Type(whole, kind, "whole", aids);
            if (piece.Typed.empty()) continue;
            typist.Type(piece, kind, "within", aids);
            for (int i = 0; i < call.Places; ++i) {
                size_t place = PlaceIn(host, chance());
                TWork work{file, host.substr(0, place), piece.Typed, host.substr(place), piece.IsClosed};
                // Typed into a value, what looks like a tag in a value of its own is one.
                work.IsClosed = work.IsClosed && !HasTagInValue(work.Typed);
                typist.Type(work, kind, "anywhere", aids);
            }
        }
        host = text;
    }
    typist.Print();
    std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    std::printf("%zu files, %d passed over, %.1f s\n", call.Files.size(), passed, seconds.count());
    return typist.HasFailed;
} catch (const TFailure& failure) {
    std::fprintf(stderr, "typed_by_hand: %s\n", failure.what());
    return 2;
}
