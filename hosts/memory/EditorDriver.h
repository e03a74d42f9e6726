// Acts as an editor does for each key: the model for whoever puts the engine into a real
// one. What a key means is the session's to say (typing/TypingSession.h); here are the text
// that it goes into, the caret, undo, and the lens.
//
//     TEditorDriver driver(view, registry, services);
//     driver.TypeChar('<');                // opens the list of elements
//     driver.TypeChar('d');                // leaves those that begin with "d"
//     driver.PressKey(ekEnter);            // writes the selected one
//     driver.Undo();                       // takes back that key, whatever it wrote
//
// A list belongs to the text it was made for. If text, caret or view have changed
// behind its back, or the buffer has become read-only, the list is dropped, nothing is
// written, and the warning says why in one line.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "memory/EditView.h"
#include "memory/KibitzRegistry.h"
#include "memory/Services.h"
#include "typing/TypingSession.h"

namespace caretwell {

enum TEditorKey { ekEnter, ekTab, ekEscape, ekUp, ekDown, ekBackspace, ekLeft, ekRight, ekCtrlSpace };

/// What a host puts between a document and the engine: which language is spoken at the
/// caret, and what that language's manager is shown of the document.
struct TEditorLens {
    /// The name by which the registry is asked for a manager: "x.css" in the style
    /// element of a page, say. Unset: the name of the document.
    std::function<std::string(TEditView&)> NameAt{};
    /// The view that the manager sees until its list has ended; null, or unset: the view itself.
    std::function<TRef<INibEditView>(TRef<TEditView>, INibCodeInsightManager&)> Show{};
};

class TEditorDriver final : private ITypingHost {
public:
    using TWarning = std::function<void(std::string_view line)>;

    /// Registry and services outlive the driver.
    TEditorDriver(TRef<TEditView> view, TKibitzRegistry& registry, TRef<TMemoryServices> services,
                  TWarning warning = {});
    /// An open list is dismissed.
    ~TEditorDriver() override;
    TEditorDriver(const TEditorDriver&) = delete;
    TEditorDriver& operator=(const TEditorDriver&) = delete;

    // Keys. Each is one step of undo, with everything that it brings about.
    /// Tab (9), Enter (13, or 10) and Escape (27) are the keys, not the characters.
    void TypeChar(char32_t c);
    void PressKey(TEditorKey key);
    /// Takes back the last key, or brings it back. False if there is none.
    bool Undo();
    bool Redo();

    // The same in single steps, for a host that has no keys.
    /// Opens the list as if the user had asked. False if nothing is offered; a list
    /// that is already open stays.
    bool OpenList();
    /// Opens the list as if c, which stands before the caret, had just been typed.
    bool OpenListFor(char16_t c);
    /// Selects the first item of that name, so that the next key that closes the list
    /// takes it: TypeChar(13), TypeChar(' '). False, and nothing changed, if there is none.
    bool Select(std::u16string_view name);
    /// Dismisses the list; nothing is written.
    void Dismiss();
    /// Dismisses the list and lets go of its manager, which may be about to leave.
    void Detach();

    // The open list; without one there are no items, and -1 is selected.
    bool IsOpen() const { return FSession.IsOpen(); }
    int32_t ItemCount() const { return FSession.ItemCount(); }
    TListItem Item(int32_t index) const { return FSession.Item(index); }
    std::vector<TListItem> Items() const;
    int32_t SelectedIndex() const { return FSession.SelectedIndex(); }
    /// Would the key write the selected item?
    bool Takes(char32_t key) const { return FSession.Takes(key); }
    /// The token before the caret that the list is filtered on.
    const std::u16string& Filter() const { return FSession.Token(); }
    /// Where that token begins, in bytes.
    int32_t FilterStart() const { return FSession.TokenStart(); }

    /// The manager of the open list, or else the one for the caret; null if there is none.
    TRef<INibCodeInsightManager> Manager() { return IsOpen() ? FSession.Manager() : FindManager(); }
    /// The host's syntax class at the caret, which the manager is told; 0 unless set.
    void SetElement(int32_t element) { FElement = element; }
    void SetLens(TEditorLens lens) { FLens = std::move(lens); }

private:
    TTextBuffer& Text() { return FView->Text(); }

    // What the session asks.
    TRef<INibEditView> View() override { return FView; }
    TRef<INibCodeInsightManager> FindManager() override;
    void ShowList(TRef<INibInsightList> list, int32_t tokenStart) override;
    int32_t Element() override { return FElement; }
    uint64_t Revision() override { return Text().Revision(); }
    void BeginList(INibCodeInsightManager& manager) override;
    void EndList() override { FServices->ShowInstead(nullptr); }

    // What a key is about to do.
    enum class TKeyKind {
        Look,    // moves caret or selection, opens or dismisses a list
        Write,   // writes into the text
        Choose,  // writes, and with a list open means an item of it
    };
    // One key, or what counts as one.
    template <class TAction>
    void ForKey(TKeyKind kind, TAction action);
    bool CheckPlace(TKeyKind kind);
    bool Refuse(std::string_view reason);  // always false
    void InsertTyped(char32_t c);
    void MoveCaret(TEditorKey key);
    void DeletePrevious();

    TRef<TEditView> FView;
    TKibitzRegistry& FRegistry;
    TRef<TMemoryServices> FServices;
    TWarning FWarning;
    TEditorLens FLens;
    int32_t FElement = 0;
    TTypingSession FSession{*this};
};

}  // namespace caretwell
