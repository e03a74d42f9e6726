// What a key means while somebody types: goes it into the text, does it take an item of
// the list, does it open one?
//
// An editor could answer this by the contract alone, and would find the traps one by one:
// a list that turns "</p" into "</picture", a word that was typed in full and is replaced
// by a longer one, closing tags that stand twice. A session knows them. One promise holds
// for all that it does: what is typed by hand, taking nothing from a list by Enter, Tab or
// the arrows, comes out as it was typed.
//
//     void TEditor::Press(char32_t key) {         // one step of undo
//         if (FSession.KeyDown(key)) return;      // the session has done all of it
//         InsertAtCaret(key);                     // as the editor always does
//         FSession.KeyTyped(key);
//     }
//
// A session belongs to one view, which has the focus while keys are told. Like all of the
// engine it belongs to the main thread. Without view or manager it takes no key and opens no
// list.
#pragma once

#include <cstdint>
#include <string>

#include "caretwell/host/Nibapi.h"
#include "caretwell/typing/OwnText.h"

namespace caretwell {

/// What a session asks of its host beyond the contract. Outlives the session.
class ITypingHost {
public:
    virtual ~ITypingHost() = default;
    /// The view that the session belongs to, as the user has it; null if it is closed.
    virtual TRef<INibEditView> View() = 0;
    /// The manager for the language that is spoken at the caret; null if there is none.
    virtual TRef<INibCodeInsightManager> FindManager() = 0;
    /// The list that is open, as CurrentList has to answer from now on, and the byte offset
    /// at which the token before the caret begins, which InsertText(text, true) replaces.
    /// Told anew whenever the token has changed. Null: the list has ended.
    virtual void ShowList(TRef<INibInsightList> list, int32_t tokenStart) = 0;
    /// The host's syntax class at the caret, for GetCodeInsightType.
    virtual int32_t Element() { return 0; }
    /// Differs after every change of the text. A host that cannot tell is believed that
    /// nobody else changes the text while a list is open.
    virtual uint64_t Revision() { return 0; }
    /// The manager is about to be asked for a list, and is through with it again: the time in
    /// which a host that shows it another view does so.
    virtual void BeginList(INibCodeInsightManager&) {}
    virtual void EndList() {}
};

/// A line of the open list.
struct TListItem {
    std::u16string Name;               ///< what the user reads as the item; of a value, the value
    std::u16string Text, Type, Class;  ///< as the list operations give them
    bool IsClosing = false;            ///< a closing tag
};

class TTypingSession {
public:
    /// Keys that are no characters. Others, such as the arrows, are the host's own.
    static constexpr char32_t KeyTab = 9, KeyEnter = 13, KeyEscape = 27;

    CARETWELL_API explicit TTypingSession(ITypingHost& host);
    /// An open list is dismissed.
    CARETWELL_API ~TTypingSession();
    TTypingSession(const TTypingSession&) = delete;
    TTypingSession& operator=(const TTypingSession&) = delete;

    // Keys. KeyDown, and KeyTyped where it follows, are one step of undo.
    /// Before the key is in the text. True: all that it does is done, and it is not to be
    /// typed. False: the host types it and calls KeyTyped; of Escape it makes what it will.
    CARETWELL_API bool KeyDown(char32_t key);
    /// The key stands before the caret now.
    CARETWELL_API void KeyTyped(char32_t key);
    /// The host has deleted text before the caret, as Backspace does.
    CARETWELL_API void TextDeleted();
    /// The caret has moved, or the text has changed, by anything else than keys (a click, an
    /// arrow, undo): the list ends, and what the engine has put in is text like any other.
    CARETWELL_API void CaretMoved();

    // The list.
    /// The user's command. False if nothing is offered; a list that is open already stays.
    CARETWELL_API bool OpenList();
    /// The same as if c, which stands before the caret, had just been typed.
    CARETWELL_API bool OpenListFor(char16_t c);
    /// What the view's INibEditActions::InvokeCompletion calls: the list is opened when the
    /// key that asked for it is through.
    CARETWELL_API void RequestList();
    /// Ends the list; nothing is written.
    CARETWELL_API void Dismiss();

    bool IsOpen() const { return static_cast<bool>(FSymbols); }
    /// False if text or caret have moved under the open list: the next key will drop it.
    CARETWELL_API bool IsInPlace();
    /// The manager of the open list, or the last one asked; null if none was.
    const TRef<INibCodeInsightManager>& Manager() const { return FManager; }
    /// Lets go of the manager, which may be about to leave. The list ends.
    CARETWELL_API void Detach();

    // Its lines; without a list there are none, and -1 is selected.
    CARETWELL_API int32_t ItemCount() const;
    CARETWELL_API TListItem Item(int32_t index) const;
    int32_t SelectedIndex() const { return FList ? FList->SelectedIndex() : -1; }
    /// What the user has picked, by an arrow or a click: the next key that closes the list
    /// takes it. An index outside of the list is taken to its nearer end.
    CARETWELL_API void Select(int32_t index);
    /// Would the key write the selected item? An editor shows it so: firmly or faintly.
    CARETWELL_API bool Takes(char32_t key) const;
    /// The token before the caret that the list is filtered on, and where it begins (bytes).
    const std::u16string& Token() const { return FToken; }
    int32_t TokenStart() const { return FTokenStart; }

private:
    // The list as Done sees it: what is selected.
    class TSelection final : public TImplements<INibInsightList> {
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
    // What opens when the key is in the text.
    enum class TNext { ByKey, List, Values, Attributes, ClosingTags };

    // Without a list.
    bool AskForList(char16_t key);
    bool Opens(char16_t key, TNibInvokeType& invokeType);
    void ShowList();
    void AskAfter(char32_t key);
    bool AskForClosingTags();
    void OpenRequested();
    void Settle();

    // With a list.
    bool PressInList(char32_t key);
    bool EndsPlainValue(char32_t key) const;
    bool TakeChoice(char32_t key);
    bool CloseWithout(char32_t key);
    TNibKeyUse FindKeyUse(INibEditView& view, char32_t key, int32_t caret) const;
    void CloseTag();
    void EndList(bool accepted);
    void Refilter();
    void Pick(int32_t index);
    int32_t BestIndex() const;
    bool BeginsWithToken(int32_t index) const;
    bool IsWordChar(char32_t key) const;
    bool IsValueList() const;
    bool IsAttributeList() const;
    bool MayStandInTag(INibEditView& view) const;
    bool IsStyleSheet() const;
    std::u16string NameOf(int32_t index) const;
    std::u16string WordOf(int32_t index) const;

    ITypingHost& FHost;
    TOwnText FOwn;
    bool FIsBusy = false;  // a key is at work
    bool FIsRequested = false;
    bool FIsInValue = false;  // of a style sheet, which goes on after each blank
    TNext FNext = TNext::ByKey;
    uint64_t FRevision = 0;  // after the last key
    int32_t FCaret = 0;

    // The open list.
    TRef<INibCodeInsightManager> FManager;
    TRef<INibCodeInsightSymbolList> FSymbols;
    TRef<TSelection> FList;
    std::u16string FToken;
    int32_t FTokenStart = 0;
    char16_t FTrigger = 0;       // what opened it; 0 for the user's request
    bool FIsAskedFor = false;    // by the user
    bool FIsPicked = false;      // the selection is the user's
    bool FIsClosingTag = false;  // "</" has been typed in it
};

}  // namespace caretwell
