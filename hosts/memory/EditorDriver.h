// Acts as an editor does for each key: the model for whoever puts the engine into a
// real one.
//
// A key while no list is open goes into the text first; then the language's manager
// is asked whether it opens a list (GetCodeInsightType, InvokeCodeCompletion). While
// a list is open the manager judges each key (OnEditorKey): letters go on filtering,
// other keys close the list with or without a choice, and Done writes the choice.
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

namespace caretwell {

enum TEditorKey { ekEnter, ekTab, ekEscape, ekUp, ekDown, ekBackspace, ekLeft, ekRight, ekCtrlSpace };

/// A line of the open list.
struct TListItem {
    std::u16string Name;               ///< what the user reads as the item; of a value, the value
    std::u16string Text, Type, Class;  ///< as the list operations give them
    bool IsClosing = false;            ///< a closing tag
};

/// The list as Done sees it: what is selected.
class TInsightList final : public TImplements<INibInsightList> {
public:
    void Select(int32_t index, std::u16string text) {
        FIndex = index;
        FText = std::move(text);
    }
    std::u16string SelectedText() override { return FText; }
    int32_t SelectedIndex() override { return FIndex; }

private:
    int32_t FIndex = -1;
    std::u16string FText;
};

/// What a host puts between a document and the engine: which language is spoken at the
/// caret, and what that language's manager is shown of the document.
struct TEditorLens {
    /// The name by which the registry is asked for a manager: "x.css" in the style
    /// element of a page, say. Unset: the name of the document.
    std::function<std::string(TEditView&)> NameAt{};
    /// The view that the manager sees until its list has ended; null, or unset: the view itself.
    std::function<TRef<INibEditView>(TRef<TEditView>, INibCodeInsightManager&)> Show{};
};

class TEditorDriver {
public:
    using TWarning = std::function<void(std::string_view line)>;

    /// Registry and services outlive the driver.
    TEditorDriver(TRef<TEditView> view, TKibitzRegistry& registry, TRef<TMemoryServices> services,
                  TWarning warning = {});
    /// An open list is dismissed.
    ~TEditorDriver();
    TEditorDriver(const TEditorDriver&) = delete;
    TEditorDriver& operator=(const TEditorDriver&) = delete;

    TEditView& View() { return *FView; }

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
    bool IsOpen() const { return static_cast<bool>(FSymbols); }
    int32_t ItemCount() const { return FSymbols ? FSymbols->GetCount() : 0; }
    TListItem Item(int32_t index) const;
    std::vector<TListItem> Items() const;
    int32_t SelectedIndex() const { return FList ? FList->SelectedIndex() : -1; }
    /// The token before the caret that the list is filtered on.
    const std::u16string& Filter() const { return FWord; }
    /// Where that token begins, in bytes.
    int32_t FilterStart() const { return FWordStart; }

    /// The manager of the open list, or else the one for the caret; null if there is none.
    TRef<INibCodeInsightManager> Manager() { return IsOpen() ? FManager : FindManager(); }
    /// The host's syntax class at the caret, which the manager is told; 0 unless set.
    void SetElement(int32_t element) { FElement = element; }
    void SetLens(TEditorLens lens) { FLens = std::move(lens); }

private:
    TTextBuffer& Text() { return FView->Text(); }

    // What a key is about to do.
    enum TKeyKind {
        kkLook,    // moves caret or selection, opens or dismisses a list
        kkWrite,   // writes into the text
        kkChoose,  // writes, and with a list open means an item of it
    };
    // One key, or what counts as one.
    template <class TAction>
    void ForKey(TKeyKind kind, TAction action);
    bool CheckPlace(TKeyKind kind);
    void OpenRequested();
    void Settle();

    // Without a list.
    void TypeIntoText(char32_t c);
    void InsertTyped(char32_t c);
    bool IsBeforeCaret(char32_t c);
    TRef<INibCodeInsightManager> FindManager();
    bool AskForList(char16_t c);
    void ParseAhead();
    void ShowList();

    // With a list.
    void TypeIntoList(char32_t c);
    bool IsWordChar(char32_t c) const;
    bool BeginsClosingForm(char32_t c);
    void Refilter();
    bool BeginsWithWord(int32_t index) const;
    void SelectItem(int32_t index);
    std::u16string NameOf(int32_t index) const;
    bool TakesChoice(char32_t c) const;
    void CloseList(char32_t key, bool accept);
    void EndList(bool accepted);
    bool Refuse(std::string_view reason);  // always false

    void MoveCaret(TEditorKey key);
    void DeletePrevious();

    TRef<TEditView> FView;
    TKibitzRegistry& FRegistry;
    TRef<TMemoryServices> FServices;
    TWarning FWarning;
    TEditorLens FLens;
    int32_t FElement = 0;

    // The open list.
    TRef<INibCodeInsightManager> FManager;
    TRef<INibCodeInsightSymbolList> FSymbols;
    TRef<TInsightList> FList;
    std::u16string FWord;
    int32_t FWordStart = 0;
    char16_t FTrigger = 0;        // what opened it; 0 for the user's request
    bool FIsAskedFor = false;     // by the user's own command
    bool FIsClosingForm = false;  // "</" was typed since
    bool FIsChosen = false;       // the selection is the user's and not just the first item
    uint64_t FRevision = 0;       // the text that it was made for
    int32_t FCaret = 0;

    bool FIsBusy = false;       // inside of a key
    bool FIsRequested = false;  // InvokeCompletion came meanwhile
};

}  // namespace caretwell
