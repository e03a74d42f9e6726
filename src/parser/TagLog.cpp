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
    FByName.Clear();
    ++FNaming;
}

uint32_t TTagLog::AddName(const TNameKey& key, std::string_view name) {
    FNames.emplace_back(name);
    return FByName.Add(key.Hash, static_cast<uint32_t>(FNames.size()) - 1);
}

}  // namespace caretwell
