#include "package/HTMReg.h"

#include <iterator>
#include <string>
#include <utility>

#include "host/EngineCall.h"
#include "host/Messages.h"
#include "insight/HTMLCodCmplt.h"
#include "stylesheet/CSSCodCmplt.h"
#include "symbols/MLParserUnit.h"

namespace caretwell {
namespace {

constexpr int32_t NotRegistered = -1;
int32_t FMarkupIndex = NotRegistered;
int32_t FStyleIndex = NotRegistered;
bool IsLoaded = false;
bool IsRegistered = false;  // has been tried, whatever the registry answered

// ---- what the units do at start and end

/// What a host's registry raises stays here: the entries have no result to tell it by.
template <class TAction>
void Quietly(TAction action) noexcept {
    try {
        action();
    } catch (...) {
    }
}

void EndHTMReg() {
    IsRegistered = false;
    for (int32_t* index : {&FMarkupIndex, &FStyleIndex}) {
        int32_t given = std::exchange(*index, NotRegistered);
        auto* registry = GlobalKibitzManager();
        if (given != NotRegistered && registry) Quietly([&] { registry->Unregister(given); });
    }
}

void Register(int32_t& index, TRef<INibCodeInsightManager> manager) {
    if (auto* registry = GlobalKibitzManager()) index = registry->Register(std::move(manager));
}

// Objects that a call still stands in cannot be taken away below it.
bool RefuseInsideCall(std::string_view entry) {
    if (!TEngineCall::IsUnderWay()) return false;
    Quietly([entry] {
        std::string text(entry);
        ShowMessage({}, text += " was called from inside a call of the engine and did nothing", "Failure");
    });
    return true;
}

bool IsMainThread() { return TEngineCall().IsAllowed(); }

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
    if (!IsMainThread() || IsLoaded) return;
    IsLoaded = true;
    for (const TUnit& unit : Units)
        if (unit.Start) unit.Start();
}

void IDERegister() {
    TEngineCall call;
    if (!call.IsAllowed() || !IsLoaded || std::exchange(IsRegistered, true)) return;
    Quietly([] { Register(FMarkupIndex, MarkupLanguageManager()); });
    Quietly([] { Register(FStyleIndex, CSSLanguageManager()); });
}

// Without Initialize there may be managers too: whoever asks for one gets one.
void Finalize() {
    if (!IsMainThread() || RefuseInsideCall("Finalize")) return;
    for (auto unit = std::rbegin(Units); unit != std::rend(Units); ++unit)
        if (unit->End) Quietly(unit->End);
    IsLoaded = false;
}

}  // namespace caretwell
