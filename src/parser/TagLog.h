// The tags that a scan met, in the order of the document: for whoever walks over them once
// more when the scan is over and the schema is known.
//
//     <ul><li>x</li>^</ul>     opening ul, opening li, closing li | closing ul
//
// A tag costs a row and its name a number; neither is made anew with the next scan.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "markup/NameMap.h"
#include "parser/NameKey.h"

namespace caretwell {

class TTagLog {
public:
    enum class TKind : uint8_t {
        Opening,
        Closing,
        Empty  ///< the "/>" of the opening tag before
    };
    struct TRow {
        uint32_t Name;   ///< number of the name as it is written; 0 for Empty
        int32_t Offset;  ///< byte offset of the "<"
        TKind Kind;
    };
    /// Of what stands after the caret no more is kept.
    static constexpr size_t MaxAfterCaret = 64;

    /// The start of a scan in an element, or in none: no rows. Names keep their numbers.
    void Begin(std::string context);
    void AddTag(const TNameKey& key, std::string_view name, bool isClosing, int32_t offset,
                bool isBeforeCaret) {
        if (Admit(isBeforeCaret))
            FRows.push_back({NumberOf(key, name), offset, isClosing ? TKind::Closing : TKind::Opening});
    }
    void AddEmpty(int32_t offset, bool isBeforeCaret) {
        if (Admit(isBeforeCaret)) FRows.push_back({0, offset, TKind::Empty});
    }

    const std::vector<TRow>& GetRows() const { return FRows; }
    /// Rows of tags that stand before the caret; a tag whose name the caret touches is none.
    size_t GetCountBeforeCaret() const { return FBeforeCaret; }
    /// The element in which the document is taken to stand; empty for none.
    const std::string& GetContext() const { return FContext; }
    size_t GetNameCount() const { return FNames.size(); }
    const std::string& GetName(uint32_t number) const { return FNames[number]; }
    /// Changes when names get other numbers.
    uint64_t GetNaming() const { return FNaming; }

private:
    bool Admit(bool isBeforeCaret) {
        if (isBeforeCaret) ++FBeforeCaret;
        else if (FRows.size() - FBeforeCaret >= MaxAfterCaret) return false;
        return true;
    }
    uint32_t NumberOf(const TNameKey& key, std::string_view name) {
        auto* known = FByName.Find(key.Hash, [&](uint32_t number) { return FNames[number] == name; });
        return known ? *known : AddName(key, name);
    }
    uint32_t AddName(const TNameKey& key, std::string_view name);

    std::vector<TRow> FRows;
    size_t FBeforeCaret = 0;
    std::string FContext;
    std::vector<std::string> FNames;  // as they are written, by number
    TNameMap<uint32_t> FByName;
    uint64_t FNaming = 0;
};

}  // namespace caretwell
