#include "cli/Text.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "markup/Text.h"

namespace caretwell {
namespace {

constexpr std::string_view Gap = "  ";
constexpr std::string_view Dim = "\x1b[2m";
constexpr std::string_view Normal = "\x1b[0m";

bool IsColoured() { return IsTerminal() && !std::getenv("NO_COLOR"); }

}  // namespace

bool IsTerminal() {
    static const bool result = isatty(STDOUT_FILENO) == 1;
    return result;
}

void TTable::AddRow(std::vector<std::string> cells) {
    auto& row = FRows.emplace_back();
    for (auto& cell : cells) row.push_back({std::move(cell), csPlain});
}

void TTable::AddCell(std::string text, TStyle style) { FRows.back().push_back({std::move(text), style}); }

std::string TTable::ToText() const {
    std::vector<int32_t> widths;
    for (const auto& row : FRows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], CountCharacters(std::string_view(row[i].Text)));
    }
    bool isColoured = IsColoured();
    std::string text;
    for (const auto& row : FRows) {
        // Blanks are put in front of a cell, so that no line ends in one.
        size_t missing = 0;
        for (size_t i = 0; i < row.size(); ++i) {
            const auto& [cell, style] = row[i];
            if (!cell.empty()) {
                text.append(missing, ' ');
                missing = 0;
                bool isDim = isColoured && style == csQuiet;
                if (isDim) text += Dim;
                text += cell;
                if (isDim) text += Normal;
            }
            int32_t width = widths[i] - CountCharacters(std::string_view(cell));
            missing += static_cast<size_t>(width) + Gap.size();
        }
        text += '\n';
    }
    return text;
}

void TFacts::Add(std::string_view key, std::string value) {
    if (!value.empty()) FTable.AddRow({std::string(key), std::move(value)});
}

std::string ShowText(std::string_view text) {
    std::string shown;
    for (char c : text) {
        auto byte = static_cast<unsigned char>(c);
        if (c == '\n') shown += "\\n";
        else if (c == '\r') shown += "\\r";
        else if (c == '\t') shown += "\\t";
        else if (byte < 0x20 || byte == 0x7F) {
            char spelled[8];
            std::snprintf(spelled, sizeof spelled, "\\x%02X", byte);
            shown += spelled;
        } else {
            shown += c;
        }
    }
    return shown;
}

std::string ShowCharacter(int32_t code) {
    bool isControl = code < 0x20 || (code >= 0x7F && code < 0xA0);
    bool isInvisible = code == 0xAD || (code >= 0x200B && code <= 0x200F) ||
                       (code >= 0x202A && code <= 0x202E) || (code >= 0x2060 && code <= 0x206F) ||
                       code == 0xFEFF;
    return isControl || isInvisible || code > 0x10FFFF ? std::string() : ToUtf8(static_cast<char32_t>(code));
}

std::string CodePointName(int32_t code) {
    char name[16];
    std::snprintf(name, sizeof name, "U+%04X", static_cast<unsigned>(code));
    return name;
}

}  // namespace caretwell
