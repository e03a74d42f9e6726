// Output for people: columns that line up, and colour on a terminal alone.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace caretwell {

/// Rows of cells. Each column is as wide as its widest cell in characters.
class TTable {
public:
    enum TStyle { csPlain, csQuiet };

    void AddRow(std::vector<std::string> cells);
    /// Adds to the last row.
    void AddCell(std::string text, TStyle style = csPlain);
    std::string ToText() const;

private:
    struct TCell {
        std::string Text;
        TStyle Style;
    };
    std::vector<std::vector<TCell>> FRows;
};

/// Keys and what belongs to them, one a line.
class TFacts {
public:
    void Add(std::string_view key, std::string value);
    std::string ToText() const { return FTable.ToText(); }

private:
    TTable FTable;
};

/// The text with control characters spelled, so that it stays on its line.
std::string ShowText(std::string_view text);
/// A character by its code; empty for one that a terminal cannot show.
std::string ShowCharacter(int32_t code);
/// U+00E4
std::string CodePointName(int32_t code);

/// True if standard output is a terminal.
bool IsTerminal();

}  // namespace caretwell
