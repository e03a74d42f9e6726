// What the managers of both languages have in common: the operations of the contract
// that neither has anything to say to, and the one guard around all the others.
#pragma once

#include <exception>
#include <string>
#include <utility>

#include "host/EngineCall.h"
#include "host/Nibapi.h"
#include "markup/Edit.h"
#include "markup/Text.h"

namespace caretwell {

/// First is the manager's own interface, Rest what it answers for beyond the common ones.
template <class First, class... Rest>
class TManagerBase
    : public TImplements<First, Rest..., INibInsightContext, INibCodeInsightSymbolList, INibEditComposer> {
public:
    /// Hosts built before the current identifier ask for the manager by the older one.
    bool Query(const TGuid& id, void** out) noexcept override {
        bool isOlder = id == INibCodeInsightManager::OlderId;
        return TManagerBase::TImplements::Query(isOlder ? INibCodeInsightManager::Id : id, out);
    }

    // INibInsightContext
    bool GetTypeInfoCount(int32_t&) override { return false; }
    bool GetTypeInfo(int32_t) override { return false; }
    bool GetIDsOfNames(std::u16string_view, int32_t&) override { return false; }
    bool Invoke(int32_t) override { return false; }

    // INibCodeInsightManager
    bool GetEnabled() override { return FEnabled; }
    void SetEnabled(bool value) override { FEnabled = value; }
    void AllowCodeInsight(bool&, char16_t) override {}
    bool PreValidateCodeInsight(std::u16string_view) override { return true; }
    bool GetMultiSelect() override { return false; }
    void GetSymbolList(TRef<INibCodeInsightSymbolList>& list) override { list = this; }
    void GetParameterList(TRef<INibCodeInsightParameterList>& list) override { list = nullptr; }
    bool InvokeParameterCodeInsight(TNibInvokeType, int32_t&) override { return false; }
    void ParameterCodeInsightAnchorPos(TNibEditPos&) override {}
    std::u16string GetHintText(int32_t, int32_t) override { return {}; }

    // INibCodeInsightSymbolList
    int32_t GetViewerVisibilityFlags(int32_t) override { return 2; }
    int32_t GetProcDispatchFlags(int32_t) override { return 0; }

    // INibEditComposer
    TNibKeyUse GetKeyUse() override { return FKeyUse; }

protected:
    /// The package has ended; a host may still hold the manager.
    virtual bool IsRetired() const = 0;
    /// Tells the host's message view what ended a call.
    virtual void Report(const std::exception& problem) const = 0;

    // Where exceptions stop. The action runs on the main thread only, and not for a manager
    // that the package has left behind; what it throws becomes a message.
    template <class TAction>
    void Guarded(TAction action) const noexcept {
        try {
            TEngineCall call;
            if (!call.IsAllowed() || IsRetired()) return;
            try {
                action();
            } catch (const std::exception& problem) {
                Report(problem);
            }
        } catch (...) {
            // Even the message could not be delivered: there is nobody to tell.
        }
    }
    /// The same with a result, which is `otherwise` where the action gives none.
    template <class TResult, class TAction>
    TResult Guarded(TResult otherwise, TAction action) const noexcept {
        Guarded([&] { otherwise = action(); });
        return otherwise;
    }

    /// Null if the host has none.
    static TRef<INibEditView> CurrentView() {
        auto services = GetService<INibCodeInsightServices>();
        return services ? services->CurrentEditView() : nullptr;
    }
    /// Writes what a choice writes, with the caret after it, and notes what became of the
    /// key that closed the list.
    bool Write(const TEdit& edit, INibEditView& view, bool forceDelete) {
        if (!Apply(edit, view, forceDelete)) return false;
        if (edit.Way == TEdit::TWay::Writer) MoveCaretTo(view, edit.Caret);
        std::string written = ToUtf8(edit.Text).substr(0, static_cast<size_t>(edit.Caret - edit.Start));
        bool hasKey = FClosingKey != 0 && written.ends_with(ToUtf8(std::u16string_view(&FClosingKey, 1)));
        FKeyUse = hasKey ? TNibKeyUse::Written : TNibKeyUse::Used;
        return true;
    }
    /// Enter and Tab mean the list also where a dialog was cancelled and nothing was written.
    void NoteListKey() {
        if (FClosingKey == 0 || FClosingKey == u'\t' || FClosingKey == u'\r') FKeyUse = TNibKeyUse::Used;
    }

    char16_t FClosingKey = 0;  // the key that closed the list; 0 while it is open
    TNibKeyUse FKeyUse = TNibKeyUse::Unused;

private:
    bool FEnabled = true;
};

}  // namespace caretwell
