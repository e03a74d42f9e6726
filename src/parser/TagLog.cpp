#include "parser/TagLog.h"

namespace caretwell {

void TTagLog::Begin(std::string context) {
    FContext = std::move(context);
    FRows.clear();
    FBeforeCaret = 0;
    // One document of rubbish does not bind its memory for good.
    constexpr size_t KeptNames = 4'096, KeptRows = 1'000'000;
    if (FRows.capacity() > KeptRows) FRows.shrink_to_fit();
    if (FNames.size() <= KeptNames) return;
    FNames.clear();
    FSlots.assign(64, 0);
    ++FNaming;
}

uint32_t TTagLog::AddName(const TNameKey& key, std::string_view name) {
    FNames.push_back({std::string(name), key.Hash});
    if (FNames.size() * 2 > FSlots.size()) {
        FSlots.assign(FSlots.size() * 2, 0);
        for (uint32_t i = 0; i + 1 < FNames.size(); ++i) EnterSlot(i);
    }
    EnterSlot(static_cast<uint32_t>(FNames.size()) - 1);
    return static_cast<uint32_t>(FNames.size()) - 1;
}

void TTagLog::EnterSlot(uint32_t number) {
    size_t i = FNames[number].Hash & (FSlots.size() - 1);
    while (FSlots[i]) i = (i + 1) & (FSlots.size() - 1);
    FSlots[i] = number + 1;
}

}  // namespace caretwell
