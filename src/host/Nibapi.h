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
// Threads. Everything here belongs to the host's main thread.
//
// Operations are appended to an interface and never moved.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/CharSet.h"
#include "host/RefCounted.h"

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
    /// Copies at most count bytes from offset on to dest. Returns how many; 0 at or behind the end.
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
    virtual void Insert(std::string_view utf8) = 0;
};

struct INibEditBuffer : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e03");
    using Parent = IRefCounted;
    virtual std::string FileName() = 0;
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
    static constexpr uint32_t TakeBackwards = 256;
    static constexpr uint32_t TakeVisible = 15;

    virtual int32_t Row() = 0;     ///< from 1
    virtual int32_t Column() = 0;  ///< in characters, from 1, never cut to 16 bits
    virtual void MoveTo(int32_t row, int32_t column) = 0;
    /// Moves by lines and characters; a move beyond an end of the line stops there.
    virtual void MoveBy(int32_t rows, int32_t columns) = 0;
    virtual void MoveToLineEnd() = 0;
    /// Save and Restore nest.
    virtual void Save() = 0;
    virtual void Restore() = 0;
    /// Deletes count characters before the caret.
    virtual void DeleteBack(int32_t count) = 0;
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
    /// Save and Restore nest.
    virtual void Save() = 0;
    virtual void Restore() = 0;
    virtual void Start() = 0;   ///< the range begins at the caret
    virtual void Finish() = 0;  ///< the range ends at the caret
    virtual std::u16string Text() = 0;
};

struct INibEditView : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e06");
    using Parent = IRefCounted;
    virtual TNibEditPos CaretPos() = 0;
    virtual void SetCaretPos(TNibEditPos position) = 0;
    virtual TNibCharPos OffsetToCharPos(int32_t offset) = 0;
    virtual int32_t CharPosToOffset(TNibCharPos position) = 0;
    virtual TNibCharPos EditPosToCharPos(TNibEditPos position) = 0;
    virtual TNibEditPos CharPosToEditPos(TNibCharPos position) = 0;
    virtual TRef<INibEditBlock> Block() = 0;
    virtual TRef<INibEditBuffer> Buffer() = 0;
    virtual TRef<INibEditPosition> Position() = 0;
    virtual void Repaint() = 0;
};

/// Asked of a view by query. Editors whose lines may exceed 32,767 characters give
/// it, so that such a caret keeps its exact place; without it the two 16-bit
/// positions are used.
struct INibOffsetView : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e07");
    using Parent = IRefCounted;
    virtual int32_t CaretOffset() = 0;
    virtual void SetCaretOffset(int32_t offset) = 0;
};

/// Asked of a view by query.
struct INibEditActions : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e08");
    using Parent = IRefCounted;
    static constexpr int32_t CompleteAsUser = 129;
    /// CompleteAsUser opens the list as if the user had asked for it.
    virtual void InvokeCompletion(int32_t style) = 0;
};

/// A file open in the editor, with its views.
struct INibSourceEditor : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e09");
    using Parent = IRefCounted;
    virtual std::string FileName() = 0;
    virtual int32_t ViewCount() = 0;
    virtual TRef<INibEditView> View(int32_t index) = 0;
    virtual TRef<INibEditReader> CreateReader() = 0;
};

// ----------------------------------------------------------------- services
// Found by query on TarnwellIDEServices. Any of them may be missing.

struct INibServices : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e10");
    using Parent = IRefCounted;
    virtual std::string BaseRegistryKey() = 0;  ///< root of the host's settings
    virtual std::string RootDirectory() = 0;    ///< the schema folder lies under it
};

/// The list that the host shows.
struct INibInsightList : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e11");
    using Parent = IRefCounted;
    virtual std::u16string SelectedText() = 0;
    virtual int32_t SelectedIndex() = 0;  ///< below 0 if nothing is selected
};

struct INibCodeInsightServices : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e12");
    using Parent = IRefCounted;
    virtual TRef<INibEditView> CurrentEditView() = 0;  ///< null if none
    virtual TRef<INibInsightList> CurrentList() = 0;   ///< null if none
    /// Inserts at the caret, which ends behind the text. With replaceToken the token
    /// that the list was filtered on goes away first.
    virtual void InsertText(std::u16string_view text, bool replaceToken) = 0;
};

struct INibMessageServices : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e13");
    using Parent = IRefCounted;
    virtual void ClearMessages() = 0;
    virtual void ShowMessageView() = 0;
    virtual void AddMessage(std::string_view fileName, std::string_view text, std::string_view prefix,
                            int32_t line, int32_t column) = 0;
};

/// Option sets: which extensions belong to a kind of file.
struct INibOptionServices : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e14");
    using Parent = IRefCounted;
    /// Extensions of an option set such as "Tarnwell.EditOptions.StyleSheet"; empty if unknown.
    virtual std::string GetExtensionsForTypeID(std::string_view typeId) = 0;
    virtual bool MatchExtensions(std::string_view fileName, std::string_view extensions) = 0;
};

/// The host's dialog that picks a URL.
class TSelectURLDialog {
public:
    virtual ~TSelectURLDialog() = default;
    virtual std::string GetModuleFileName() const = 0;  ///< the document that the URL is for
    virtual void SetInitialFolder(std::string_view folder) = 0;
    virtual bool Execute() = 0;  ///< true if confirmed
    virtual std::string GetPreviewURL() const = 0;
};

/// The host's dialog that picks a colour.
class TWebColorDlg {
public:
    virtual ~TWebColorDlg() = default;
    virtual bool Execute() = 0;  ///< true if confirmed
    virtual std::string GetSelectedColor() const = 0;
};

struct INibDialogServices : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e15");
    using Parent = IRefCounted;
    /// Null from a host without windows.
    virtual std::unique_ptr<TSelectURLDialog> CreateSelectURLDialog() = 0;
    virtual std::unique_ptr<TWebColorDlg> CreateWebColorDlg() = 0;
};

/// The host's root object, queried for services; null if no host was set.
IRefCounted* TarnwellIDEServices();
/// Called by the host before anything else, and with null as the last thing.
void SetTarnwellIDEServices(TRef<IRefCounted> services);

/// Queries the host for a service; null if it has none.
template <class I>
TRef<I> GetService() {
    return QueryAs<I>(TarnwellIDEServices());
}

// ------------------------------------------------- what the host calls: lists

enum TNibCodeInsightType : int32_t { citNone = 0, citList = 1 };
enum TNibInvokeType : int32_t { itNone = 0, itUser = 1, itTrigger = 2 };
enum TNibSortOrder : int32_t { soByName = 0, soByScope = 1 };

struct INibCodeInsightParameterList : IRefCounted {
    static constexpr TGuid Id = Guid("5a0f83a6-6f0b-4f0e-9a60-3b7a1c5a2e16");
    using Parent = IRefCounted;
};

/// The list of one invocation: a live view, read between InvokeCodeCompletion and Done.
/// An index counts from the first entry that the filter leaves.
struct INibCodeInsightSymbolList : IRefCounted {
    static constexpr TGuid Id = Guid("4ca1cdfd-bd9a-4628-94ae-9bf3eb2da22e");
    using Parent = IRefCounted;
    virtual void Clear() = 0;
    virtual int32_t GetCount() = 0;
    virtual bool GetSymbolIsReadWrite(int32_t index) = 0;
    virtual bool GetSymbolIsAbstract(int32_t index) = 0;
    virtual int32_t GetViewerSymbolFlags(int32_t index) = 0;
    virtual int32_t GetViewerVisibilityFlags(int32_t index) = 0;
    virtual int32_t GetProcDispatchFlags(int32_t index) = 0;
    virtual void SetSortOrder(TNibSortOrder order) = 0;
    virtual TNibSortOrder GetSortOrder() = 0;
    virtual int32_t FindIdent(std::u16string_view ident) = 0;
    virtual bool FindSymIndex(std::u16string_view ident, int32_t& index) = 0;
    virtual void SetFilter(std::u16string_view text) = 0;
    virtual std::u16string GetSymbolText(int32_t index) = 0;
    virtual std::u16string GetSymbolTypeText(int32_t index) = 0;
    virtual std::u16string GetSymbolClassText(int32_t index) = 0;
};

/// One language's side of code insight.
struct INibCodeInsightManager : IRefCounted {
    static constexpr TGuid Id = Guid("013f5f71-c500-44c8-904c-554f98c2ec28");
    /// The identifier that hosts built before the current one ask for.
    static constexpr TGuid OlderId = Guid("ba5b444a-6e78-4a79-bf05-e184c1132b30");
    using Parent = IRefCounted;

    virtual std::string GetName() = 0;
    virtual std::string GetIDString() = 0;
    virtual bool GetEnabled() = 0;
    virtual void SetEnabled(bool value) = 0;
    virtual TCharSet EditorTokenValidChars(bool preValidating) = 0;
    virtual void AllowCodeInsight(bool& allow, char16_t key) = 0;
    virtual bool PreValidateCodeInsight(std::u16string_view text) = 0;
    virtual bool IsViewerBrowsable(int32_t index) = 0;
    virtual bool GetMultiSelect() = 0;
    virtual void GetSymbolList(TRef<INibCodeInsightSymbolList>& list) = 0;
    virtual void OnEditorKey(char16_t key, bool& closeViewer, bool& accept) = 0;
    virtual bool HandlesFile(std::string_view fileName) = 0;
    virtual std::u16string GetLongestItem() = 0;
    virtual void GetParameterList(TRef<INibCodeInsightParameterList>& list) = 0;
    /// c is the typed character, 0 for the user's command; element the host's syntax class at the caret.
    virtual void GetCodeInsightType(char16_t c, int32_t element, TNibCodeInsightType& type,
                                    TNibInvokeType& invokeType) = 0;
    /// True if the host is to show the list; text receives the token before the caret.
    virtual bool InvokeCodeCompletion(TNibInvokeType howInvoked, std::u16string& text) = 0;
    virtual bool InvokeParameterCodeInsight(TNibInvokeType howInvoked, int32_t& selectedIndex) = 0;
    virtual void ParameterCodeInsightAnchorPos(TNibEditPos& position) = 0;
    virtual int32_t ParameterCodeInsightParamIndex(TNibEditPos position) = 0;
    virtual std::u16string GetHintText(int32_t line, int32_t column) = 0;
    virtual bool GotoDefinition(std::string& fileName, int32_t& line, int32_t index) = 0;
    /// The list is closed; accepted says with a choice.
    virtual void Done(bool accepted, bool& displayParams) = 0;
    virtual std::string GetOptionSetName() = 0;
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
    virtual uint8_t GetContext() = 0;
};

struct TNibRect {
    int32_t Left = 0, Top = 0, Right = 0, Bottom = 0;
    friend bool operator==(const TNibRect&, const TNibRect&) = default;
};

/// The surface on which the host lets a list line be drawn, with one current font.
class INibCanvas {
public:
    virtual ~INibCanvas() = default;
    virtual std::string GetFontName() const = 0;
    virtual void SetFontName(std::string_view name) = 0;
    /// A colour as 0xBBGGRR, or SystemColor | index.
    virtual uint32_t GetFontColor() const = 0;
    virtual void SetFontColor(uint32_t color) = 0;
    virtual void SetBold(bool bold) = 0;
    virtual void Refresh() = 0;
    /// Lays the text out at rect and moves rect's right and bottom edges to its end.
    virtual void MeasureText(std::u16string_view text, TNibRect& rect, uint32_t flags) = 0;
    virtual void TextOut(int32_t x, int32_t y, uint32_t options, const TNibRect& clip,
                         std::u16string_view text) = 0;

    static constexpr uint32_t SystemColor = 0xFF000000;
};

struct INibInsightDraw : IRefCounted {
    static constexpr TGuid Id = Guid("32ca7b43-9afc-49cf-abc9-7ecd772488d9");
    using Parent = IRefCounted;
    virtual void DrawItem(int32_t index, INibCanvas& canvas, TNibRect& rect, bool textOnly, bool doDraw,
                          bool& defaultDraw) = 0;
};

/// The host's registry of code insight managers.
class INibKibitzRegistry {
public:
    virtual ~INibKibitzRegistry() = default;
    virtual int32_t Register(TRef<INibCodeInsightManager> manager) = 0;
    virtual void Unregister(int32_t index) = 0;
};

/// The host's registry; null if no host was set. Not owned.
INibKibitzRegistry* GlobalKibitzManager();
void SetGlobalKibitzManager(INibKibitzRegistry* registry);

}  // namespace caretwell
