// The style sheet side as the host sees it: from a caret to a list, and from a choice
// to an edit.
//
//     a { co^              list of properties; "color"  ->  a { color:^
//     a { color: r^        list of values;     "red"    ->  a { color: red;^
//
// What the host calls the list is a live view of the property range or of the value
// range of the symbol table; the position that the parser found at the caret tells
// which. So nothing may parse between an invocation and the end of its list.
//
// Exceptions end here: every operation below that can throw catches and answers as if
// there were nothing to offer.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "host/Nibapi.h"
#include "stylesheet/CSSLanguage.h"
#include "stylesheet/CSSParser.h"

namespace caretwell {

/// What a choice writes, as an edit that has not been made.
struct TCSSChoiceEdit {
    std::u16string Text;       ///< goes in at the caret
    int32_t DeletedCount = 0;  ///< characters in front of the caret that go first
    int32_t DeletedBytes = 0;  ///< the same in bytes
    int32_t CaretOffset = 0;   ///< byte offset of the caret afterwards
    /// Name of the editor that is to supply the value, such as "length..."; empty for an
    /// item that is written as it stands. Text then holds only what goes behind the value.
    std::string EditorName;
};

/// What the engine sees at the caret, for those who want to know why.
struct TCSSExplanation {
    std::string Position;         ///< "kpExpr"
    std::string Property;         ///< the current property; empty if there is none
    std::string LastDeclaration;  ///< property name as written in the newest declaration
};

class TCSSKibitzManager final
    : public TImplements<INibCodeInsightManager, INibInsightContext, INibCodeInsightSymbolList> {
public:
    /// Reads css.xml out of the schema folder.
    TCSSKibitzManager();
    /// Answers for the older identifier of the manager's interface too.
    bool Query(const TGuid& id, void** out) noexcept override;

    // For hosts that show an edit before it is made, or explain themselves.
    /// What Done would write for an item of the open list; nothing for an index out of
    /// range or without a view. Nothing is written, no dialog is shown.
    std::optional<TCSSChoiceEdit> ComposeChoice(int32_t index) noexcept;
    /// As of the last invocation.
    TCSSExplanation Explain() const noexcept;
    const TCSSSymbolTable& GetSymbolTable() const { return FParser.FSymbolTable; }

    /// The package ends: from here on there is nothing to offer.
    void Retire();

    // INibCodeInsightManager
    std::string GetName() override { return "Style Sheet"; }
    std::string GetIDString() override { return "Tarnwell.CodeInsight.CSS"; }
    bool GetEnabled() override { return FEnabled; }
    void SetEnabled(bool value) override { FEnabled = value; }
    TCharSet EditorTokenValidChars(bool preValidating) override;
    void AllowCodeInsight(bool&, char16_t) override {}
    bool PreValidateCodeInsight(std::u16string_view) override { return true; }
    bool IsViewerBrowsable(int32_t) override { return false; }
    bool GetMultiSelect() override { return false; }
    void GetSymbolList(TRef<INibCodeInsightSymbolList>& list) override { list = this; }
    void OnEditorKey(char16_t key, bool& closeViewer, bool& accept) override;
    bool HandlesFile(std::string_view fileName) override;
    std::u16string GetLongestItem() override { return u"property "; }
    void GetParameterList(TRef<INibCodeInsightParameterList>& list) override { list = nullptr; }
    void GetCodeInsightType(char16_t c, int32_t element, TNibCodeInsightType& type,
                            TNibInvokeType& invokeType) override;
    bool InvokeCodeCompletion(TNibInvokeType howInvoked, std::u16string& text) override;
    bool InvokeParameterCodeInsight(TNibInvokeType, int32_t&) override { return false; }
    void ParameterCodeInsightAnchorPos(TNibEditPos&) override {}
    int32_t ParameterCodeInsightParamIndex(TNibEditPos) override { return 0; }
    std::u16string GetHintText(int32_t, int32_t) override { return {}; }
    bool GotoDefinition(std::string&, int32_t&, int32_t) override { return false; }
    void Done(bool accepted, bool& displayParams) override;
    std::string GetOptionSetName() override { return OptionSet; }

    // INibInsightContext
    bool GetTypeInfoCount(int32_t&) override { return false; }
    bool GetTypeInfo(int32_t) override { return false; }
    bool GetIDsOfNames(std::u16string_view, int32_t&) override { return false; }
    bool Invoke(int32_t) override { return false; }
    uint8_t GetContext() override;

    // INibCodeInsightSymbolList
    void Clear() override { FParser.FSymbolTable.ResetKibitz(); }
    int32_t GetCount() override;
    bool GetSymbolIsReadWrite(int32_t) override { return true; }
    bool GetSymbolIsAbstract(int32_t) override { return false; }
    int32_t GetViewerSymbolFlags(int32_t) override { return 1; }
    int32_t GetViewerVisibilityFlags(int32_t) override { return 2; }
    int32_t GetProcDispatchFlags(int32_t) override { return 0; }
    void SetSortOrder(TNibSortOrder order) override { FSortOrder = order; }
    TNibSortOrder GetSortOrder() override { return FSortOrder; }
    int32_t FindIdent(std::u16string_view ident) override;
    bool FindSymIndex(std::u16string_view ident, int32_t& index) override;
    void SetFilter(std::u16string_view text) override;
    std::u16string GetSymbolText(int32_t index) override;
    std::u16string GetSymbolTypeText(int32_t) override { return {}; }
    std::u16string GetSymbolClassText(int32_t index) override;

private:
    static constexpr const char* OptionSet = "Tarnwell.EditOptions.StyleSheet";

    void LoadSchema();
    void ParseAtCaret(const TRef<INibEditView>& view);
    std::string ItemText(int32_t index) const;
    TCSSChoiceEdit ComposeEdit(INibEditView& view, std::u16string text);
    void WriteChoice(INibCodeInsightServices& services);

    TNibSortOrder FSortOrder = soByName;  // stored only: the list is always by name
    bool FEnabled = true;
    char16_t FCompletionKey = 0;  // the ";" that closed the list
    TStyleSheetParser FParser;
    TKibitzPos FKibitzPos = kpNone;  // of the last invocation
    bool FIsParsing = false;
    bool FIsRetired = false;
};

/// The manager of the process, for hosts that ask for more than the interfaces give. Made
/// at the first call; not owned.
TCSSKibitzManager& CSSKibitzManager();
/// The end of the unit: drops the manager. The host's registry must have let go of it.
void ReleaseCSSLanguageManager();

}  // namespace caretwell
