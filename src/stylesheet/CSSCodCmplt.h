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
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "markup/ManagerBase.h"
#include "stylesheet/CSSLanguage.h"
#include "stylesheet/CSSParser.h"

namespace caretwell {

/// What the engine sees at the caret, for those who want to know why.
struct TCSSExplanation {
    std::string Position;         ///< "kpExpr"
    std::string Property;         ///< the current property; empty if there is none
    std::string LastDeclaration;  ///< property name as written in the newest declaration
};

/// The characters of a word, on which the list is filtered.
inline constexpr TCharSet CSSWordChars =
    TCharSet("-\\").WithRange('0', '9').WithRange('A', 'Z').WithRange('a', 'z').WithRange(128, 255);

class TCSSKibitzManager final : public TManagerBase<INibCodeInsightManager> {
public:
    /// Reads css.xml out of the schema folder.
    TCSSKibitzManager();

    /// As of the last invocation.
    TCSSExplanation Explain() const noexcept;

    // INibEditComposer
    bool ComposeChoice(int32_t index, char16_t key, TNibEdit& edit) override;
    void ComposeAids(std::vector<TNibEdit>& edits) override { edits.clear(); }

    /// The package ends: from here on there is nothing to offer.
    void Retire();

    // INibCodeInsightManager
    std::string GetName() override { return "Style Sheet"; }
    std::string GetIDString() override { return "Tarnwell.CodeInsight.CSS"; }
    TCharSet EditorTokenValidChars(bool preValidating) override;
    bool IsViewerBrowsable(int32_t) override { return false; }
    void OnEditorKey(char16_t key, bool& closeViewer, bool& accept) override;
    bool HandlesFile(std::string_view fileName) override;
    std::u16string GetLongestItem() override { return u"property "; }
    void GetCodeInsightType(char16_t c, int32_t element, TNibCodeInsightType& type,
                            TNibInvokeType& invokeType) override;
    bool InvokeCodeCompletion(TNibInvokeType howInvoked, std::u16string& text) override;
    int32_t ParameterCodeInsightParamIndex(TNibEditPos) override { return 0; }
    bool GotoDefinition(std::string&, int32_t&, int32_t) override { return false; }
    void Done(bool accepted, bool& displayParams) override;
    std::string GetOptionSetName() override { return OptionSet; }

    // INibInsightContext
    uint8_t GetContext() override;

    // INibCodeInsightSymbolList
    void Clear() override { FParser.FSymbolTable.ResetKibitz(); }
    int32_t GetCount() override;
    bool GetSymbolIsReadWrite(int32_t) override { return true; }
    bool GetSymbolIsAbstract(int32_t) override { return false; }
    int32_t GetViewerSymbolFlags(int32_t) override { return 1; }
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

    bool IsRetired() const override { return FIsRetired; }
    void Report(const std::exception& problem) const override;

    void LoadSchema();
    void ParseAtCaret(const TRef<INibEditView>& view);
    std::string ItemText(int32_t index) const;

    // What of the text and the list a choice depends on.
    struct TChoice {
        std::u16string Text;  // the item, or the answer of its dialog
        char16_t Key = 0;     // that closed the list
        TRef<INibEditView> View;
    };
    TCSSEditor* FindEditor(std::u16string_view item) const;
    TEdit Compose(const TChoice& choice) const;
    TEdit ComposeEdit(const TChoice& choice) const;
    bool WriteChoice(INibCodeInsightServices& services);

    TNibSortOrder FSortOrder = soByName;  // stored only: the list is always by name
    char16_t FInvokeKey = 0;              // the trigger character
    bool FIsInsideWord = false;           // some of a word stood before the caret when the list came
    char16_t FCompletionKey = 0;          // the ";" that closed the list
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
