// Code insight for markup: the object that the host talks to. It turns the state of a
// parse into one of four lists, and a choice into an edit.
//
//     <ul><^        elements of ul, and </ul>
//     <a ^          attributes of a that are not written yet
//     <a target="^  values
//     &am^          entities
//
// It holds no list of its own: what the host shows is a live view of what the parser and
// the symbol manager hold, so nothing may parse between an invocation and its Done.
#pragma once

#include <memory>
#include <string>

#include "insight/Choice.h"
#include "insight/MLCodeInsight.h"
#include "markup/MLBufferProducer.h"
#include "parser/ParserContext.h"
#include "symbols/MLSymbolManager.h"

namespace caretwell {

/// Which of the four lists an index speaks of.
enum class TListKind { Entities, Elements, Values, Attributes };

class TMLKibitzManager final
    : public TImplements<INibMLCodeInsightManager, ISymbolManagerAccessor, INibInsightContext,
                         INibInsightDraw, INibCodeInsightSymbolList> {
public:
    TMLKibitzManager();
    bool Query(const TGuid& id, void** out) noexcept override;

    // ---- The list and the choice, for hosts that show an edit before it is made.

    TListKind GetListKind() const;
    /// What choosing an item of the open list would write; touches nothing. key is the
    /// key that closes the list, 0 for Enter.
    TChoiceEdit ComposeChoice(int32_t index, char16_t key = 0);

    // ---- ISymbolManagerAccessor
    TMLSymbolManager* GetSymbolManager() override { return &FSymbols; }

    // ---- INibInsightContext
    bool GetTypeInfoCount(int32_t&) override { return false; }
    bool GetTypeInfo(int32_t) override { return false; }
    bool GetIDsOfNames(std::u16string_view, int32_t&) override { return false; }
    bool Invoke(int32_t) override { return false; }
    uint8_t GetContext() override { return FContext; }

    // ---- INibCodeInsightManager
    std::string GetName() override { return "Markup Language"; }
    std::string GetIDString() override { return "Tarnwell.CodeInsight.HTML"; }
    bool GetEnabled() override { return FEnabled; }
    void SetEnabled(bool value) override { FEnabled = value; }
    TCharSet EditorTokenValidChars(bool preValidating) override;
    void AllowCodeInsight(bool&, char16_t) override {}
    bool PreValidateCodeInsight(std::u16string_view) override { return true; }
    bool IsViewerBrowsable(int32_t index) override;
    bool GetMultiSelect() override { return false; }
    void GetSymbolList(TRef<INibCodeInsightSymbolList>& list) override { list = this; }
    void OnEditorKey(char16_t key, bool& closeViewer, bool& accept) override;
    bool HandlesFile(std::string_view fileName) override;
    std::u16string GetLongestItem() override;
    void GetParameterList(TRef<INibCodeInsightParameterList>& list) override { list = nullptr; }
    void GetCodeInsightType(char16_t c, int32_t element, TNibCodeInsightType& type,
                            TNibInvokeType& invokeType) override;
    bool InvokeCodeCompletion(TNibInvokeType howInvoked, std::u16string& text) override;
    bool InvokeParameterCodeInsight(TNibInvokeType, int32_t&) override { return false; }
    void ParameterCodeInsightAnchorPos(TNibEditPos&) override {}
    int32_t ParameterCodeInsightParamIndex(TNibEditPos) override { return -1; }
    std::u16string GetHintText(int32_t, int32_t) override { return {}; }
    bool GotoDefinition(std::string& fileName, int32_t& line, int32_t index) override;
    void Done(bool accepted, bool& displayParams) override;
    std::string GetOptionSetName() override { return "Tarnwell.EditOptions.HTML"; }

    // ---- INibMLCodeInsightManager
    void GetCurrentTag(TRef<INibMLTag>& tag) override { tag = FSymbols.GetCurrentTag(); }
    bool GetForceDelete() override { return FForceDelete; }
    void SetForceDelete(bool value) override { FForceDelete = value; }
    bool GetIsASPEnabled() override { return FSymbols.GetIsASPEnabled(); }
    void SetIsASPEnabled(bool value) override { FSymbols.SetIsASPEnabled(value); }
    bool IsASCXFile() override;
    void GetTagFromHashList(std::u16string_view name, TRef<INibMLTag>& tag) override {
        tag = FSymbols.GetTagFromHashList(name);
    }
    TTagCase GetTagCase() override { return FSymbols.GetTagCase(); }
    bool ApplyAttributeValue(const TAttributeEdit& edit) override;
    bool ExecuteAttributeEditor(const TAttributeEdit& edit, int32_t index,
                                std::u16string_view tagName) override;
    void SetTagCase(TTagCase value) override { FSymbols.SetTagCase(value); }
    TRef<INibMLTag> GetContextTag() override { return FContextTag; }
    void SetContextTag(TRef<INibMLTag> tag) override { FContextTag = std::move(tag); }
    bool GetAutoQuote() override { return FAutoQuote; }
    void SetAutoQuote(bool value) override { FAutoQuote = value; }
    int32_t GetHiddenAttrCount() override { return FSymbols.GetHiddenAttrCount(); }
    void GetHiddenAttrs(int32_t index, TRef<INibMLTagAttribute>& attribute) override {
        attribute = FSymbols.GetHiddenAttrs(index);
    }
    int32_t GetCurrentTagAttrCount() override;
    void GetCurrentTagAttrValue(int32_t index, std::u16string& value) override;
    void GetCurrentTagAttrName(int32_t index, std::u16string& name) override;
    void GetCurrentTagAttrValueByName(std::u16string_view name, std::u16string& value) override;
    void Parse(TNibEditPos position, TRef<IMLBufferProducer> producer, TRef<INibMLTag> contextTag) override;

    // ---- INibCodeInsightSymbolList
    void Clear() override { SetFilter({}); }
    int32_t GetCount() override;
    bool GetSymbolIsReadWrite(int32_t) override { return false; }
    bool GetSymbolIsAbstract(int32_t index) override;
    int32_t GetViewerSymbolFlags(int32_t) override { return GetListKind() == TListKind::Elements ? 2 : 3; }
    int32_t GetViewerVisibilityFlags(int32_t) override { return 2; }
    int32_t GetProcDispatchFlags(int32_t) override { return 0; }
    void SetSortOrder(TNibSortOrder) override {}
    TNibSortOrder GetSortOrder() override { return soByName; }
    int32_t FindIdent(std::u16string_view ident) override;
    bool FindSymIndex(std::u16string_view ident, int32_t& index) override;
    void SetFilter(std::u16string_view text) override;
    std::u16string GetSymbolText(int32_t index) override;
    std::u16string GetSymbolTypeText(int32_t index) override;
    std::u16string GetSymbolClassText(int32_t index) override;

    // ---- INibInsightDraw
    void DrawItem(int32_t index, INibCanvas& canvas, TNibRect& rect, bool textOnly, bool doDraw,
                  bool& defaultDraw) override;

private:
    TMLParser& GetParser() const { return FSymbols.GetParser(); }
    std::u16string GetFilter();

    // Invocation
    void LoadOptions();
    bool OpenList(TNibInvokeType howInvoked, std::u16string& text);
    void ParseView(const TRef<INibEditView>& view);
    bool ChooseList(TNibInvokeType howInvoked, INibEditView& view, bool& runTail);
    void HelpTyping(INibEditView& view);
    void ShowWhatCaretIsIn();
    void SetListFilter(bool& result, std::u16string_view text);
    void InsertQuotes(INibEditView& view);
    void CloseEmptyElements(INibEditView& view);
    void InsertClosingTag(INibEditView& view);

    // Completion
    struct TChoice;
    TChoice GetChoice(char16_t key);
    TChoiceEdit Compose(const TChoice& choice);
    TChoiceEdit ComposeTypedKey(const TChoice& choice);
    TChoiceEdit ComposeEntity(const TChoice& choice);
    TChoiceEdit ComposeAttribute(const TChoice& choice);
    TChoiceEdit ComposeElement(const TChoice& choice);
    TChoiceEdit ComposeValue(const TChoice& choice);
    std::u16string ComposeRequiredAttributes(INibMLTag& tag);
    TAttributeEdit DescribeValue(INibEditView& view);
    TChoiceEdit ComposeAttributeValue(const TAttributeEdit& edit);
    bool ExecuteTagEditor(INibEditView& view);
    bool ExecuteElementEditor(INibEditView& view, int32_t index);
    void WriteChoice(const TChoice& choice);
    void FinishChoice(char16_t key, INibEditView* view);

    bool FEnabled = true;
    char16_t FCompletionKey = 0;  // the key that closed the list
    char16_t FInvokeKey = 0;      // the trigger character
    bool FAutoQuote = false;
    bool FEntityMode = false;
    bool FAutoCompletions = false;
    bool FInsertingBlank = false;  // the manager itself puts a blank into the buffer
    TRef<INibMLTag> FContextTag;   // the tag in which the document is taken to begin
    std::u16string FInitialFilter;
    bool FForceDelete = false;
    uint8_t FContext = 0;
    TMLSymbolManager& FSymbols;
    std::shared_ptr<TMLSymbolManager> FSymbolsOwner;  // of FSymbols
};

/// Called at shut-down: drops the manager, then frees the symbol manager.
void ReleaseMarkupLanguageManager();

}  // namespace caretwell
