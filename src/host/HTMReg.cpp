#include "host/HTMReg.h"

#include <iterator>

#include "insight/HTMLCodCmplt.h"
#include "stylesheet/CSSCodCmplt.h"
#include "symbols/MLParserUnit.h"

namespace caretwell {
namespace {

constexpr int32_t NotRegistered = -1;
int32_t FMarkupIndex = NotRegistered;
int32_t FStyleIndex = NotRegistered;
bool IsLoaded = false;

// ---- what the units do at start and end

void EndHTMReg() {
    auto* registry = GlobalKibitzManager();
    for (int32_t* index : {&FMarkupIndex, &FStyleIndex}) {
        if (*index != NotRegistered && registry) registry->Unregister(*index);
        *index = NotRegistered;
    }
}

struct TUnit {
    void (*Start)();
    void (*End)();
};
// In the order of their start. Units with nothing of their own to do are not listed.
constexpr TUnit Units[] = {
    {StartMLParser, EndMLParser},
    {nullptr, ReleaseMarkupLanguageManager},
    {nullptr, ReleaseCSSLanguageManager},
    {nullptr, EndHTMReg},
};

}  // namespace

void Initialize() {
    if (IsLoaded) return;
    IsLoaded = true;
    for (const TUnit& unit : Units)
        if (unit.Start) unit.Start();
}

void IDERegister() {
    if (!IsLoaded || FMarkupIndex != NotRegistered) return;
    auto* registry = GlobalKibitzManager();
    TRef<INibCodeInsightManager> markup = MarkupLanguageManager();
    if (registry) FMarkupIndex = registry->Register(markup);
    TRef<INibCodeInsightManager> style = CSSLanguageManager();
    if (registry) FStyleIndex = registry->Register(style);
}

void Finalize() {
    if (!IsLoaded) return;
    for (auto unit = std::rbegin(Units); unit != std::rend(Units); ++unit)
        if (unit->End) unit->End();
    IsLoaded = false;
}

}  // namespace caretwell
