// What the engine asks of its host, and what the host asks of the engine.
//
// An editor takes the engine up by giving it these interfaces: services found by
// query on TarnwellIDEServices, a registry of managers, and edit views over its
// buffers. It then drives the two managers through INibCodeInsightManager and
// reads the list through INibCodeInsightSymbolList.
//
// Units. Offsets are bytes of the document's UTF-8 text, from 0. Lines count from
// 1. TNibEditPos counts columns in characters from 1 (a tab is one character);
// TNibCharPos counts bytes within the line from 0. Text of the list and of the
// document passes as 16-bit code units; file names, settings and messages as UTF-8.
//
// Threads. Everything here belongs to the host's main thread (IPlatform::IsMainThread).
// A call from any other thread is refused: no list, nothing written, no message.
//
// Null. What the host may leave out says so ("null if none"); the engine then has
// nothing to offer and writes nothing. A view whose handles (Position, Block) are null
// fails the call that needed them, with one message.
//
// Exceptions. None leaves the engine. One that the host raises ends the call under way
// as if there were nothing to offer; the markup manager tells what it said in a message.
//
// Operations are appended to an interface and never moved.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "caretwell/host/CharSet.h"
#include "caretwell/host/Export.h"
#include "caretwell/host/RefCounted.h"

namespace caretwell {

// ---------------------------------------------------------------- positions

/// A place as the user sees it. A column beyond 32,767 is given as 32,767; a view
/// that has such lines offers INibOffsetView beside it.
struct TNibEditPos {
    int16_t Col = 0;   ///< in characters, from 1
    int32_t Line = 0;  ///< from 1
    friend bool operator==(const TNibEditPos&, const TNibEditPos&) = default;
};

/// A place as the buffer stores it.
struct TNibCharPos {
    int16_t CharIndex = 0;  ///< in bytes of the line, from 0
    int32_t Line = 0;       ///< from 1
    friend bool operator==(const TNibCharPos&, const TNibCharPos&) = default;
};

// ------------------------------------------------------------------ buffers

/// Reads the text of a buffer. Made for a short use; the text does not change below it.
struct INibEditReader : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e01");
    using Parent = IRefCounted;
    /// Copies at most count bytes from offset on to dest. Returns how many; 0 at or after the end.
    virtual int32_t Read(int32_t offset, char* dest, int32_t count) = 0;
};

/// Changes a buffer in one undoable step, from front to back. The step ends with
/// the last reference to the writer.
struct INibEditWriter : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e02");
    using Parent = IRefCounted;
    /// Leaves everything up to offset (in the text before the writer) as it is.
    virtual void CopyTo(int32_t offset) = 0;
    /// Deletes everything up to offset (in the text before the writer).
    virtual void DeleteTo(int32_t offset) = 0;
    /// Puts text in at the place reached. Offsets of later calls still count in the text
    /// before the writer.
    virtual void Insert(std::string_view utf8) = 0;
};

/// The text of a document. Offsets given by the engine come from its last parse: when the
/// text has changed since, they may lie after its end, which counts as the end.
struct INibEditBuffer : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e03");
    using Parent = IRefCounted;
    /// Path or bare name; its extension chooses the language. Never opened by the engine.
    virtual std::string FileName() = 0;
    /// A new reader for each use; null reads as an empty document.
    virtual TRef<INibEditReader> CreateReader() = 0;
    /// Null if the buffer cannot be written.
    virtual TRef<INibEditWriter> CreateWriter() = 0;
};

// -------------------------------------------------------------------- views

/// Follows the caret of a view: what moves it moves the caret.
struct INibEditPosition : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e04");
    using Parent = IRefCounted;
    /// Flags of TakeText.
    static constexpr uint32_t TakeBackwards = 256;  ///< look before the caret
    static constexpr uint32_t TakeVisible = 15;     ///< add all visible characters to the set

    virtual int32_t Row() = 0;     ///< from 1
    virtual int32_t Column() = 0;  ///< in characters, from 1, never cut to 16 bits
    /// A place outside of the text is taken to the nearest inside.
    virtual void MoveTo(int32_t row, int32_t column) = 0;
    /// Moves by lines and characters; a move beyond an end of the line stops there.
    virtual void MoveBy(int32_t rows, int32_t columns) = 0;
    virtual void MoveToLineEnd() = 0;  ///< in front of the line break
    /// Remembers the caret. Save and Restore nest, over every handle of the view.
    virtual void Save() = 0;
    /// Puts back what the last Save remembered; nothing without one.
    virtual void Restore() = 0;
    /// Deletes count characters before the caret, as far as there are so many.
    virtual void DeleteBack(int32_t count) = 0;
    /// The caret ends after the character.
    virtual void InsertChar(char16_t c) = 0;
    /// The run of characters of the set next to the caret, which stays. Forwards
    /// unless TakeBackwards is given. TakeVisible adds letters, digits and all other
    /// visible characters to the set. The run never leaves the line unless the set
    /// holds line breaks.
    virtual std::u16string TakeText(const TCharSet& chars, uint32_t flags) = 0;
};

/// A marked range of a view.
struct INibEditBlock : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e05");
    using Parent = IRefCounted;
    /// Remembers the range. Save and Restore nest, over every handle of the view.
    virtual void Save() = 0;
    /// Puts back what the last Save remembered; nothing without one.
    virtual void Restore() = 0;
    virtual void Start() = 0;           ///< the range begins at the caret
    virtual void Finish() = 0;          ///< the range ends at the caret
    virtual std::u16string Text() = 0;  ///< of the range; empty if it ends before it begins
};

/// A window on a buffer, with a caret. The engine asks for the current view at each call
/// and keeps none between calls, so a view may go away while a list is open.
struct INibEditView : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e06");
    using Parent = IRefCounted;
    virtual TNibEditPos CaretPos() = 0;
    virtual void SetCaretPos(TNibEditPos position) = 0;  ///< taken to the nearest inside
    // Conversions. A place outside of the text is taken to the nearest inside.
    virtual TNibCharPos OffsetToCharPos(int32_t offset) = 0;
    virtual int32_t CharPosToOffset(TNibCharPos position) = 0;
    virtual TNibCharPos EditPosToCharPos(TNibEditPos position) = 0;
    virtual TNibEditPos CharPosToEditPos(TNibCharPos position) = 0;
    virtual TRef<INibEditBlock> Block() = 0;        ///< a handle for each use, never null
    virtual TRef<INibEditBuffer> Buffer() = 0;      ///< null reads as an empty document
    virtual TRef<INibEditPosition> Position() = 0;  ///< a handle for each use, never null
    /// The engine has written or moved the caret.
    virtual void Repaint() = 0;
};

/// Asked of a view by query. Editors whose lines may exceed 32,767 characters give
/// it, so that such a caret keeps its exact place; without it the two 16-bit
/// positions are used.
struct INibOffsetView : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e07");
    using Parent = IRefCounted;
    virtual int32_t CaretOffset() = 0;  ///< in bytes
    virtual void SetCaretOffset(int32_t offset) = 0;
};

/// Asked of a view by query; without it lists do not follow each other of themselves.
struct INibEditActions : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e08");
    using Parent = IRefCounted;
    static constexpr int32_t CompleteAsUser = 129;  ///< the only style that the engine uses
    /// CompleteAsUser opens the list as if the user had asked for it. It is called from
    /// inside Done or InvokeCodeCompletion; a host does best to wait until that returns.
    virtual void InvokeCompletion(int32_t style) = 0;
};

/// A file open in the editor, with its views.
struct INibSourceEditor : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e09");
    using Parent = IRefCounted;
    virtual std::string FileName() = 0;
    virtual int32_t ViewCount() = 0;                     ///< may be 0
    virtual TRef<INibEditView> View(int32_t index) = 0;  ///< from 0; null out of range
    virtual TRef<INibEditReader> CreateReader() = 0;     ///< for a file without a view
};

// ----------------------------------------------------------------- services
// Found by query on TarnwellIDEServices. Any of them may be missing.

/// Where things are kept. Without it the options have their first values.
struct INibServices : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e10");
    using Parent = IRefCounted;
    virtual std::string BaseRegistryKey() = 0;  ///< root of the host's settings
    virtual std::string RootDirectory() = 0;  ///< not asked: IPlatform::SchemaFolder tells where schemas lie
};

/// The list that the host shows.
struct INibInsightList : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e11");
    using Parent = IRefCounted;
    /// The item as the user reads it: for a value, the value.
    virtual std::u16string SelectedText() = 0;
    virtual int32_t SelectedIndex() = 0;  ///< below 0 if nothing is selected
};

/// The editor itself. Without it no list opens and nothing is written.
struct INibCodeInsightServices : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e12");
    using Parent = IRefCounted;
    virtual TRef<INibEditView> CurrentEditView() = 0;  ///< null if none
    virtual TRef<INibInsightList> CurrentList() = 0;   ///< null if none
    /// Inserts at the caret, which ends after the text. With replaceToken the token
    /// that the list was filtered on goes away first.
    virtual void InsertText(std::u16string_view text, bool replaceToken) = 0;
};

/// The message view: what reading a schema gave. Without it messages are lost.
struct INibMessageServices : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e13");
    using Parent = IRefCounted;
    virtual void ClearMessages() = 0;    ///< a schema is about to be read
    virtual void ShowMessageView() = 0;  ///< a message is about to come
    /// prefix is a word in front of the text: "Error", "Warning", "Hint", "Failure",
    /// "Code Completion", or nothing. line and column count from 1, 0 where there is none.
    virtual void AddMessage(std::string_view fileName, std::string_view text, std::string_view prefix,
                            int32_t line, int32_t column) = 0;
};

/// Option sets: which extensions belong to a kind of file.
struct INibOptionServices : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e14");
    using Parent = IRefCounted;
    /// Extensions of an option set such as "Tarnwell.EditOptions.StyleSheet"; empty if unknown.
    virtual std::string GetExtensionsForTypeID(std::string_view typeId) = 0;
    /// True if the file's extension is one of them, in the form that the call above gives.
    virtual bool MatchExtensions(std::string_view fileName, std::string_view extensions) = 0;
};

/// The host's dialog that picks a URL.
class TSelectURLDialog {
public:
    virtual ~TSelectURLDialog() = default;
    virtual std::string GetModuleFileName() const = 0;  ///< the document that the URL is for
    virtual void SetInitialFolder(std::string_view folder) = 0;
    virtual bool Execute() = 0;                     ///< true if confirmed
    virtual std::string GetPreviewURL() const = 0;  ///< as it is to be written, UTF-8
};

/// The host's dialog that picks a colour.
class TWebColorDlg {
public:
    virtual ~TWebColorDlg() = default;
    virtual bool Execute() = 0;                        ///< true if confirmed
    virtual std::string GetSelectedColor() const = 0;  ///< as it is to be written: "#ff0000"
};

/// The dialogs by which values are chosen. A dialog that is missing counts as cancelled.
struct INibDialogServices : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e15");
    using Parent = IRefCounted;
    virtual std::unique_ptr<TSelectURLDialog>
    CreateSelectURLDialog() = 0;                                    ///< null from a host without windows
    virtual std::unique_ptr<TWebColorDlg> CreateWebColorDlg() = 0;  ///< null likewise
};

/// The host's root object, queried for services; null if no host was set. Not owned by the caller.
CARETWELL_API IRefCounted* TarnwellIDEServices();
/// Called by the host before anything else, and with null as the last thing. The engine
/// keeps one reference in between.
CARETWELL_API void SetTarnwellIDEServices(TRef<IRefCounted> services);
/// The same for a class of several interfaces, which is no IRefCounted by one road alone.
template <class T>
requires(!std::is_convertible_v<T*, IRefCounted*>) void SetTarnwellIDEServices(const TRef<T>& services) {
    void* root = nullptr;
    if (services) services->Query(IRefCounted::Id, &root);
    SetTarnwellIDEServices(TRef<IRefCounted>::Attach(static_cast<IRefCounted*>(root)));
}

/// Queries the host for a service; null if it has none.
template <class I>
TRef<I> GetService() {
    return QueryAs<I>(TarnwellIDEServices());
}

// ------------------------------------------------- what the host calls: lists

/// What a key opens.
enum TNibCodeInsightType : int32_t { citNone = 0, citList = 1 };
/// Who asked for it: the user's command, or a typed character.
enum TNibInvokeType : int32_t { itNone = 0, itUser = 1, itTrigger = 2 };
/// Lists are sorted by name, whatever is set.
enum TNibSortOrder : int32_t { soByName = 0, soByScope = 1 };

/// Parameters of a call; markup and style sheets have none.
struct INibCodeInsightParameterList : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e16");
    using Parent = IRefCounted;
};

/// The list of one invocation: a live view, read between InvokeCodeCompletion and Done.
/// A host shows the filter's own word first where it is there, and closing tags, which every
/// filter leaves, at the head. An index counts from the first entry that the filter leaves; out of range
/// every text is empty. What the user reads as an item is GetSymbolText, or where that is empty (values)
/// GetSymbolTypeText without its leading blank.
struct INibCodeInsightSymbolList : IRefCounted {
    static constexpr TGuid Id = Guid("4ca1cdfd-bd9a-4628-94ae-9bf3eb2da22e");
    using Parent = IRefCounted;
    virtual void Clear() = 0;                              ///< shows all entries again
    virtual int32_t GetCount() = 0;                        ///< entries that the filter leaves
    virtual bool GetSymbolIsReadWrite(int32_t index) = 0;  ///< true in style sheets
    virtual bool GetSymbolIsAbstract(int32_t index) = 0;   ///< a closing tag
    virtual int32_t GetViewerSymbolFlags(int32_t index) = 0;
    virtual int32_t GetViewerVisibilityFlags(int32_t index) = 0;  ///< always 2
    virtual int32_t GetProcDispatchFlags(int32_t index) = 0;      ///< always 0
    virtual void SetSortOrder(TNibSortOrder order) = 0;           ///< changes nothing
    virtual TNibSortOrder GetSortOrder() = 0;
    /// The first entry shown that begins with ident, without regard to case; -1 if none. In a
    /// style sheet the first that does not sort before it.
    virtual int32_t FindIdent(std::u16string_view ident) = 0;
    /// The same; false if there is no match. index then holds a place to stand at, -1 for
    /// none, or what it held before.
    virtual bool FindSymIndex(std::u16string_view ident, int32_t& index) = 0;
    /// Leaves the entries that begin with text, without regard to case; empty leaves all.
    virtual void SetFilter(std::u16string_view text) = 0;
    virtual std::u16string GetSymbolText(int32_t index) = 0;      ///< what is written
    virtual std::u16string GetSymbolTypeText(int32_t index) = 0;  ///< a value, or a line
    virtual std::u16string GetSymbolClassText(
        int32_t index) = 0;  ///< "Element", "property": the column of kinds
};

/// One language's side of code insight. In order: HandlesFile finds the manager of a
/// document; GetCodeInsightType is asked for each key while no list is open;
/// InvokeCodeCompletion makes the list, OnEditorKey judges each key while it is open,
/// and Done ends it.
struct INibCodeInsightManager : IRefCounted {
    static constexpr TGuid Id = Guid("013f5f71-c500-44c8-904c-554f98c2ec28");
    /// The identifier that hosts built before the current one ask for.
    static constexpr TGuid OlderId = Guid("ba5b444a-6e78-4a79-bf05-e184c1132b30");
    using Parent = IRefCounted;

    virtual std::string GetName() = 0;        ///< for people: "Markup Language"
    virtual std::string GetIDString() = 0;    ///< for programs: "Tarnwell.CodeInsight.HTML"
    virtual bool GetEnabled() = 0;            ///< true until set otherwise
    virtual void SetEnabled(bool value) = 0;  ///< heeded by the host alone
    /// The characters of the token before the caret that the list is filtered on.
    virtual TCharSet EditorTokenValidChars(bool preValidating) = 0;
    virtual void AllowCodeInsight(bool& allow, char16_t key) = 0;       ///< leaves allow as it is
    virtual bool PreValidateCodeInsight(std::u16string_view text) = 0;  ///< always true
    /// True if the item leads to a place of the document (GotoDefinition).
    virtual bool IsViewerBrowsable(int32_t index) = 0;
    virtual bool GetMultiSelect() = 0;  ///< always false
    /// list receives the one list of the manager.
    virtual void GetSymbolList(TRef<INibCodeInsightSymbolList>& list) = 0;
    /// A key while the list is open; the characters 9, 13 and 27 are Tab, Enter and Escape.
    /// Sets whether it closes the list and whether it takes the selected item; both false
    /// on entry. The key is not in the text yet, and goes there only if the list stays.
    virtual void OnEditorKey(char16_t key, bool& closeViewer, bool& accept) = 0;
    /// By the extension; the file need not exist.
    virtual bool HandlesFile(std::string_view fileName) = 0;
    virtual std::u16string GetLongestItem() = 0;  ///< by which the column of kinds is measured
    virtual void GetParameterList(TRef<INibCodeInsightParameterList>& list) = 0;  ///< list receives null
    /// c is the typed character, 0 for the user's command; element the host's syntax class at the caret.
    virtual void GetCodeInsightType(char16_t c, int32_t element, TNibCodeInsightType& type,
                                    TNibInvokeType& invokeType) = 0;
    /// Parses the current view up to its caret. True if the host is to show the list; text
    /// receives the token before the caret. May write a closing tag, a slash or quotes.
    virtual bool InvokeCodeCompletion(TNibInvokeType howInvoked, std::u16string& text) = 0;
    virtual bool InvokeParameterCodeInsight(TNibInvokeType howInvoked, int32_t& selectedIndex) = 0;
    virtual void ParameterCodeInsightAnchorPos(TNibEditPos& position) = 0;  ///< not set
    virtual int32_t ParameterCodeInsightParamIndex(TNibEditPos position) = 0;
    virtual std::u16string GetHintText(int32_t line, int32_t column) = 0;  ///< always empty
    /// Where a closing tag of the list was opened: file, and line from 1. Other entries give
    /// the file with line 0. False, and no file, for an index below 0 and in a style sheet.
    virtual bool GotoDefinition(std::string& fileName, int32_t& line, int32_t index) = 0;
    /// The list is closed; accepted says with a choice, which INibInsightList::SelectedIndex
    /// names. Called once for every list that was shown. Writes the choice, and the key
    /// that closed the list where that is part of it; may ask for the next list.
    virtual void Done(bool accepted, bool& displayParams) = 0;
    virtual std::string GetOptionSetName() = 0;  ///< for INibOptionServices
};

// ------------------------------------------ what a choice or a key would write

/// A change of the document that is not made yet. Start, End are byte offsets of the text
/// as it is, Caret is one of the text as it will be.
struct TNibEdit {
    int32_t Start = 0;    ///< what goes begins here
    int32_t End = 0;      ///< and ends here; equal to Start where nothing goes
    std::u16string Text;  ///< what comes in its place
    int32_t Caret = 0;    ///< where the caret stands afterwards
    /// Not empty where a dialog of the host has to supply the text ("color", "uri",
    /// "length"): Done opens it, nothing else does. Start to End is then what its answer
    /// replaces, and Text is empty.
    std::string EditorId;
};

/// What became of the key that closed a list.
enum class TNibKeyUse : int32_t {
    Unused,   ///< nothing was written for it: the host goes on as if no list had been open
    Used,     ///< it stands for what Done wrote, and must not be typed
    Written,  ///< it is in the text now, directly before the caret: the host asks
              ///< GetCodeInsightType about it as about any other typed character
};

/// Asked of a manager by query, for hosts that show or send an edit before they make it.
/// None of these calls writes, moves the caret or opens a dialog.
struct INibEditComposer : IRefCounted {
    static constexpr TGuid Id = Guid("6d0a57c4-93b5-4c0f-8f43-2f6c0a8be7d1");
    using Parent = IRefCounted;
    /// What Done would write, if the item at index of the open list were chosen by key: 0
    /// (or 13) for Enter, 9 for Tab, else the character, as OnEditorKey is told it. False,
    /// and edit is empty, where nothing would be written. The text may have grown since the
    /// list was opened, by what the user has typed for the filter.
    virtual bool ComposeChoice(int32_t index, char16_t key, TNibEdit& edit) = 0;
    /// What InvokeCodeCompletion would write at the caret before it offers a list, for the
    /// key that GetCodeInsightType was last told: closing tags, slashes of empty elements,
    /// quotes. It parses the view as an invocation does. The edits follow each other
    /// without overlapping; all offsets are those of the text before the first of them, and
    /// Caret, the same in all, is that of the text after the last. A host that makes them
    /// itself gives a buffer without a writer to InvokeCodeCompletion, which then writes none.
    virtual void ComposeAids(std::vector<TNibEdit>& edits) = 0;
    /// Of the last Done.
    virtual TNibKeyUse GetKeyUse() = 0;
};

/// What kind of list is open, for the host's display.
struct INibInsightContext : IRefCounted {
    static constexpr TGuid Id = Guid("e935146e-b88c-4e4f-9fac-69973952d534");
    using Parent = IRefCounted;
    // Scripting hosts reach an object by these four; the engine answers "not supported" (false).
    virtual bool GetTypeInfoCount(int32_t& count) = 0;
    virtual bool GetTypeInfo(int32_t index) = 0;
    virtual bool GetIDsOfNames(std::u16string_view name, int32_t& dispId) = 0;
    virtual bool Invoke(int32_t dispId) = 0;
    /// 0 before the first list and where a style sheet has nothing to offer, 14 in text, in
    /// the list of entities and in a selector, 15 for elements in a tag's name, attributes or
    /// properties, 16 for values.
    virtual uint8_t GetContext() = 0;
};

/// In pixels; right and bottom lie outside.
struct TNibRect {
    int32_t Left = 0, Top = 0, Right = 0, Bottom = 0;
    friend bool operator==(const TNibRect&, const TNibRect&) = default;
};

/// The surface on which the host lets a list line be drawn, with one current font.
class INibCanvas {
public:
    virtual ~INibCanvas() = default;
    virtual std::string GetFontName() const = 0;
    virtual void SetFontName(std::string_view name) = 0;  ///< "" leaves the font as it is
    /// A colour as 0xBBGGRR, or SystemColor | index.
    virtual uint32_t GetFontColor() const = 0;
    virtual void SetFontColor(uint32_t color) = 0;
    virtual void SetBold(bool bold) = 0;  ///< of the current font
    virtual void Refresh() = 0;           ///< the font was changed
    /// Lays the text out at rect and moves rect's right and bottom edges to its end.
    virtual void MeasureText(std::u16string_view text, TNibRect& rect, uint32_t flags) = 0;
    virtual void TextOut(int32_t x, int32_t y, uint32_t options, const TNibRect& clip,
                         std::u16string_view text) = 0;

    static constexpr uint32_t SystemColor = 0xFF000000;  ///< marks an index of the system's colours
};

/// Asked of a manager by query: lines that are more than text, such as an entity with its character.
struct INibInsightDraw : IRefCounted {
    static constexpr TGuid Id = Guid("32ca7b43-9afc-49cf-abc9-7ecd772488d9");
    using Parent = IRefCounted;
    /// Draws, or only measures, a line of the list in rect, whose edges move to what was used.
    /// defaultDraw receives true if the host is to draw the line itself.
    virtual void DrawItem(int32_t index, INibCanvas& canvas, TNibRect& rect, bool textOnly, bool doDraw,
                          bool& defaultDraw) = 0;
};

/// The host's registry of code insight managers.
class INibKibitzRegistry {
public:
    virtual ~INibKibitzRegistry() = default;
    /// An index for Unregister; -1 if the manager was not taken. Holds a reference.
    virtual int32_t Register(TRef<INibCodeInsightManager> manager) = 0;
    /// Lets go of the manager; whoever still has a list of it open ends that first.
    virtual void Unregister(int32_t index) = 0;
};

/// The host's registry; null if no host was set. Not owned.
CARETWELL_API INibKibitzRegistry* GlobalKibitzManager();
/// The registry is not owned and outlives Finalize; null takes it back.
CARETWELL_API void SetGlobalKibitzManager(INibKibitzRegistry* registry);

}  // namespace caretwell
