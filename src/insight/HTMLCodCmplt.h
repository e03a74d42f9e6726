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
#include <optional>
#include <string>

#include "grammar/SchemaGrammars.h"
#include "insight/MLCodeInsight.h"
#include "markup/Edit.h"
#include "markup/MLBufferProducer.h"
#include "markup/ManagerBase.h"
#include "parser/ParserContext.h"
#include "symbols/MLSymbolManager.h"

namespace caretwell {

/// Which of the four lists an index speaks of.
enum class TListKind { Entities, Elements, Values, Attributes };

class TMLKibitzManager final : public TManagerBase<INibMLCodeInsightManager, ISymbolManagerAccessor,
                                                   INibMLParse, INibInsightDraw, INibGrammar> {
public:
    TMLKibitzManager();

    TListKind GetListKind() const;

    // ---- INibEditComposer
    bool ComposeChoice(int32_t index, char16_t key, TNibEdit& edit) override;
    void ComposeAids(std::vector<TNibEdit>& edits) override;

    // ---- INibMLParse
    void AddCallback(IRefCounted* observer) override;
    void RemoveCallback(IRefCounted* observer) override;
    TRef<ITagStackIterator> GetTagStack() override { return GetTagStackIterator(FSymbols); }
    TRef<ISymbolManagerIterator> GetElements() override { return GetSymbolManagerIterator(FSymbols); }

    // ---- INibGrammar
    bool GetWatching() override { return FGrammars.GetWatching(); }
    void SetWatching(bool value) override;
    bool GetAnswer(TGrammarAnswer& answer) override;

    // ---- ISymbolManagerAccessor
    TMLSymbolManager* GetSymbolManager() override { return &FSymbols; }

    // ---- INibInsightContext
    uint8_t GetContext() override { return FContext; }

    // ---- INibCodeInsightManager
    std::string GetName() override { return "Markup Language"; }
    std::string GetIDString() override { return "Tarnwell.CodeInsight.HTML"; }
    TCharSet EditorTokenValidChars(bool preValidating) override;
    bool IsViewerBrowsable(int32_t index) override;
    void OnEditorKey(char16_t key, bool& closeViewer, bool& accept) override;
    bool HandlesFile(std::string_view fileName) override;
    std::u16string GetLongestItem() override;
    void GetCodeInsightType(char16_t c, int32_t element, TNibCodeInsightType& type,
                            TNibInvokeType& invokeType) override;
    bool InvokeCodeCompletion(TNibInvokeType howInvoked, std::u16string& text) override;
    int32_t ParameterCodeInsightParamIndex(TNibEditPos) override { return -1; }
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
    std::u16string AsListed(std::u16string_view word) const;
    bool IsRetired() const override { return FSymbols.IsRetired(); }
    void Report(const std::exception& problem) const override;
    TMLParser& GetParser() const { return FSymbols.GetParser(); }
    std::u16string GetFilter() const;
    void DrawEntity(int32_t index, INibCanvas& canvas, TNibRect& rect, bool textOnly, bool doDraw);

    // From caret to list
    bool OpenList(TNibInvokeType howInvoked, std::u16string& text);
    void ParseView(const TRef<INibEditView>& view, TRef<INibMLTag> context);
    bool IsInsideKnownTag() const;
    bool CanOfferAtCaret() const;
    bool ChooseList(TNibInvokeType howInvoked, INibEditView& view, bool& runTail);
    void ShowWhatCaretIsIn();
    void SetListFilter(bool& result, std::u16string_view text);

    // Typing aids
    std::vector<TNibEdit> AidsAt(INibEditView& view) const;
    std::vector<TNibEdit> AidsInText(INibEditView& view) const;
    std::optional<TNibEdit> ComposeClosingTag(INibEditView& view, int32_t caret) const;
    void HelpTyping(const TRef<INibEditView>& view, const TRef<INibMLTag>& context);

    // From choice to text
    struct TChoice {
        char16_t Key = 0;         // that closed the list, 0 for Enter
        int32_t Index = -1;       // below 0 if nothing is chosen
        std::u16string Selected;  // what the item puts into the text
        TRef<INibEditView> View;
        bool IsMade() const { return Index >= 0; }
    };
    TChoice GetChoice(char16_t key);
    TRef<INibMLEditor> GetEditorOf(const TChoice& choice);
    TEdit Compose(const TChoice& choice);
    TEdit ComposePlain(const TChoice& choice);
    TEdit ComposeTypedKey(const TChoice& choice);
    TEdit ComposeEntity(const TChoice& choice);
    TEdit ComposeAttribute(const TChoice& choice);
    TEdit ComposeElement(const TChoice& choice);
    bool TakesValue(const INibMLTag& tag, INibMLTagAttribute& attribute) const;
    std::u16string ComposeRequiredAttributes(INibMLTag& tag);
    TEdit WithClosingKey(TEdit edit, const TChoice& choice) const;
    bool WriteChoice(const TChoice& choice);
    void FinishChoice(const TChoice& choice, bool isWritten);
    bool ExecuteTagEditor(INibMLEditor& editor, INibEditView& view);
    bool ExecuteElementEditor(INibMLEditor& editor, INibMLTag& item, INibEditView& view);

    // Values
    TEdit ComposeValue(const TChoice& choice, std::u16string value);
    TAttributeEdit DescribeValue(INibEditView& view);
    struct TValueEdit : TEdit {
        int32_t ValueOffset = 0;  // where the value itself begins
    };
    TValueEdit ComposeAttributeValue(const TAttributeEdit& value) const;
    TValueEdit ReplaceValue(const TAttributeEdit& value) const;

    char16_t FCompletionKey = 0;  // the key that closed the list, as far as Done looks at it
    char16_t FInvokeKey = 0;      // the trigger character
    bool FAutoQuote = false;
    bool FEntityMode = false;
    bool FAutoCompletions = true;   // the typing aids are wanted
    bool FInsertingBlank = false;   // the manager itself puts a blank into the buffer
    TRef<INibMLTag> FContextTag;    // the tag in which the document is taken to begin
    std::u16string FInitialFilter;  // the word before the caret when the list came
    bool FForceDelete = false;
    uint8_t FContext = 0;
    TMLSymbolManager& FSymbols;
    std::shared_ptr<TMLSymbolManager> FSymbolsOwner;  // of FSymbols
    TSchemaGrammars FGrammars{FSymbols};
};

/// Called at shut-down: drops the manager, then frees the symbol manager.
void ReleaseMarkupLanguageManager();

}  // namespace caretwell
