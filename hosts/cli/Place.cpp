#include "cli/Place.h"

#include <charconv>
#include <cstdio>
#include <optional>

#include "cli/Failure.h"
#include "memory/FileText.h"

namespace caretwell {
namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view StandardInput = "-";

bool HasByteOrderMark(const TTextBuffer& text) { return text.Substring(0, 3) == ByteOrderMark; }

std::optional<int32_t> ReadNumber(std::string_view digits) {
    int32_t number = 0;
    auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    bool isWhole = error == std::errc() && end == digits.data() + digits.size();
    return isWhole && number > 0 ? std::optional(number) : std::nullopt;
}

struct TFilePlace {
    std::string File;
    TLinePlace Place;
};

// The name ends at the last colon but one, since a colon may stand in names too.
std::optional<TFilePlace> SplitPlace(const std::string& word) {
    size_t second = word.rfind(':');
    if (second == std::string::npos || second == 0) return std::nullopt;
    size_t first = word.rfind(':', second - 1);
    if (first == std::string::npos || first == 0) return std::nullopt;
    auto line = ReadNumber(std::string_view(word).substr(first + 1, second - first - 1));
    auto column = ReadNumber(std::string_view(word).substr(second + 1));
    if (!line || !column) return std::nullopt;
    return TFilePlace{word.substr(0, first), {*line, *column}};
}

TFileText ReadInput() {
    std::string text;
    char block[65536];
    while (size_t got = std::fread(block, 1, sizeof block, stdin)) {
        if (text.size() + got > INT32_MAX) return {{}, "too large"};
        text.append(block, got);
    }
    if (std::ferror(stdin)) return {{}, "cannot be read"};
    return {std::move(text), {}};
}

// A place that the text does not have is a slip of the caller, and is not moved to the nearest.
int32_t FindOffset(const TTextBuffer& text, TLinePlace wanted, const std::string& fileName) {
    auto [line, column] = wanted;
    int32_t skipped = line == 1 && HasByteOrderMark(text);
    int32_t offset = text.OffsetOf(line, column > INT32_MAX - skipped ? column : column + skipped);
    auto [foundLine, foundColumn] = LinePlaceAt(text, offset);
    std::string problem = fileName + ":" + std::to_string(line);
    if (foundLine != line)
        throw TFailure(esWords, problem + ": the text ends in line " + std::to_string(foundLine));
    if (foundColumn != column)
        throw TFailure(esWords, problem + ":" + std::to_string(column) + ": the line ends at column " +
                                    std::to_string(foundColumn));
    return offset;
}

int32_t TakeMark(TSource& source, const std::string& mark) {
    size_t at = source.Text.find(mark);
    if (at == std::string::npos)
        throw TFailure(esWords, source.FileName + ": the mark \"" + mark + "\" is not in the text");
    source.Text.erase(at, mark.size());
    if (source.Text.find(mark, at) != std::string::npos)
        throw TFailure(esWords,
                       source.FileName + ": the mark \"" + mark + "\" is in the text more than once");
    return static_cast<int32_t>(at);
}

}  // namespace

TSource ReadSource(const TArguments& arguments, const std::string& file) {
    bool isInput = file == StandardInput;
    if (isInput && arguments.InPlace) throw TFailure(esWords, "--in-place: standard input cannot be written");
    if (!isInput && !arguments.Name.empty()) throw TFailure(esWords, file + ": --name is for standard input");
    TFileText read = isInput ? ReadInput() : ReadFileText(file);
    if (!read.Text) throw TFailure(esUnreadable, (isInput ? "standard input" : file) + ": " + read.Problem);
    std::string name = !isInput ? file : arguments.Name.empty() ? "input.html" : arguments.Name;
    return {std::move(name), std::move(*read.Text), isInput};
}

TPlace ReadPlace(const TArguments& arguments) {
    if (!arguments.Mark.empty()) {
        TPlace place{ReadSource(arguments, arguments.Target)};
        place.Offset = TakeMark(place.Source, arguments.Mark);
        return place;
    }
    auto split = SplitPlace(arguments.Target);
    if (!split)
        throw TFailure(esWords, arguments.Target + ": FILE:LINE:COLUMN is wanted, both from 1, or --mark");
    TPlace place{ReadSource(arguments, split->File)};
    TTextBuffer text(std::move(place.Source.Text));
    place.Offset = FindOffset(text, split->Place, place.Source.FileName);
    place.Source.Text = text.Text();
    return place;
}

TLinePlace LinePlaceAt(const TTextBuffer& text, int32_t offset) {
    TLinePlace place{text.LineAt(offset), text.ColumnAt(offset)};
    if (place.Line == 1 && place.Column > 1 && HasByteOrderMark(text)) --place.Column;
    return place;
}

}  // namespace caretwell
