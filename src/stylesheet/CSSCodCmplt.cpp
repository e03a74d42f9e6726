#include "stylesheet/CSSCodCmplt.h"

#include <utility>

#include "host/EngineCall.h"
#include "host/Platform.h"
#include "host/ViewHandles.h"
#include "markup/MLBufferProducer.h"
#include "markup/Text.h"
#include "stylesheet/CSSSchemaLoader.h"

namespace caretwell {
namespace {

constexpr char16_t Tab = 9, Return = 13, Escape = 27;

// The host's syntax classes at the caret in which a typed character opens no list.
constexpr int32_t ElementComment = 1, ElementString = 5;

constexpr TCharSet WordChars =
    TCharSet("-\\").WithRange('0', '9').WithRange('A', 'Z').WithRange('a', 'z').WithRange(128, 255);

// Runs what may throw; whatever it was, a host of another make does not see it. A call
// from a thread that is not the main one is refused.
template <class TResult, class TAction>
TResult Shield(TResult otherwise, TAction action) noexcept {
    try {
        TEngineCall call;
        return call.IsAllowed() ? action() : std::move(otherwise);
    } catch (...) {
        return otherwise;
    }
}

template <class TAction>
void Shield(TAction action) noexcept {
    try {
        TEngineCall call;
        if (call.IsAllowed()) action();
    } catch (...) {
    }
}

void ReportSchemaError(const std::string& fileName, std::string_view text, int32_t line) {
    auto messages = GetPlatform().IsMainThread() ? GetService<INibMessageServices>() : nullptr;
    if (messages) messages->AddMessage(fileName, text, "Error", line, 1);
}

TRef<TCSSKibitzManager>& Manager() {
    static TRef<TCSSKibitzManager> manager;
    return manager;
}

}  // namespace

// ------------------------------------------------------------------- life cycle

TRef<INibCodeInsightManager> CSSLanguageManager() {
    if (!GetPlatform().IsMainThread()) return nullptr;
    return &CSSKibitzManager();
}

TCSSKibitzManager& CSSKibitzManager() {
    if (!Manager()) Manager() = MakeRef<TCSSKibitzManager>();
    return *Manager();
}

// A host that still holds the manager is left with one that has nothing to offer.
void ReleaseCSSLanguageManager() {
    if (Manager()) Manager()->Retire();
    Manager() = nullptr;
}

void TCSSKibitzManager::Retire() {
    FIsRetired = true;
    FKibitzPos = kpNone;
}

TCSSKibitzManager::TCSSKibitzManager() { LoadSchema(); }

// An error in css.xml ends here, so that the manager comes into being all the same: it
// is told in the message view, and what could be read is offered.
void TCSSKibitzManager::LoadSchema() {
    Shield([this] {
        std::string fileName = GetPlatform().SchemaFolder() + "css.xml";
        TCSSReader reader(FParser.FSymbolTable);
        try {
            reader.LoadFromFile(fileName);
        } catch (const ECSSSchemaError& error) {
            ReportSchemaError(fileName, error.what(), error.GetLine());
            reader.Resolve();
        }
        FParser.FSymbolTable.AlphaSort();
    });
}

bool TCSSKibitzManager::Query(const TGuid& id, void** out) noexcept {
    return TImplements::Query(id == INibCodeInsightManager::OlderId ? INibCodeInsightManager::Id : id, out);
}

// -------------------------------------------------------------------- invocation

TCharSet TCSSKibitzManager::EditorTokenValidChars(bool) { return WordChars; }

bool TCSSKibitzManager::HandlesFile(std::string_view fileName) {
    return Shield(false, [&] {
        auto options = FIsRetired ? nullptr : GetService<INibOptionServices>();
        return options && options->MatchExtensions(fileName, options->GetExtensionsForTypeID(OptionSet));
    });
}

// A list opens of itself where a value or a property begins, and elsewhere on request.
void TCSSKibitzManager::GetCodeInsightType(char16_t c, int32_t element, TNibCodeInsightType& type,
                                           TNibInvokeType& invokeType) {
    type = citNone;
    if (element == ElementComment || element == ElementString) return;
    invokeType = itUser;
    if (c == 0) type = citList;
    if (c == ':' || c == ';') {
        type = citList;
        invokeType = itTrigger;
    }
}

bool TCSSKibitzManager::InvokeCodeCompletion(TNibInvokeType, std::u16string&) {
    return Shield(false, [this] {
        // The text that a parse is reading may come from a host that calls back.
        if (FIsParsing || FIsRetired) return false;
        FCompletionKey = 0;
        FKibitzPos = kpNone;
        auto services = GetService<INibCodeInsightServices>();
        auto view = services ? services->CurrentEditView() : nullptr;
        if (!view) return false;
        ParseAtCaret(view);
        return true;
    });
}

void TCSSKibitzManager::ParseAtCaret(const TRef<INibEditView>& view) {
    struct TParsing {
        bool& Flag;
        explicit TParsing(bool& flag) : Flag(flag) { Flag = true; }
        ~TParsing() { Flag = false; }
    } parsing(FIsParsing);
    auto producer = MakeRef<TMLBufferProducer>(view, 0);
    FParser.SetBufferAndPoint(producer, CaretOffsetOf(*view));
    FParser.Parse();
    FKibitzPos = FParser.FKibitzPos;
}

void TCSSKibitzManager::OnEditorKey(char16_t key, bool& closeViewer, bool& accept) {
    accept = key == Tab || key == ' ' || key == ';' || key == Return;
    if (key == ';') FCompletionKey = key;
    closeViewer = accept || key == Escape || FCompletionKey != 0;
}

TCSSExplanation TCSSKibitzManager::Explain() const noexcept {
    return Shield(TCSSExplanation(), [this] {
        const TCSSProperty* property = FParser.FSymbolTable.GetKibitzProperty();
        const TDeclaration* declaration = FParser.GetLastDeclaration();
        return TCSSExplanation{std::string(KibitzPosName(FKibitzPos)),
                               property ? property->FName : std::string(),
                               std::string(declaration ? declaration->FProperty : std::string_view())};
    });
}

// -------------------------------------------------------------------------- list

uint8_t TCSSKibitzManager::GetContext() {
    constexpr uint8_t Contexts[] = {0, 16, 15, 14, 0};  // by FKibitzPos
    return Contexts[FKibitzPos];
}

int32_t TCSSKibitzManager::GetCount() {
    if (!GetPlatform().IsMainThread()) return 0;
    if (FKibitzPos == kpExpr) return FParser.FSymbolTable.GetKibitzValueCount();
    return FKibitzPos == kpProperty ? FParser.FSymbolTable.GetKibitzPropCount() : 0;
}

int32_t TCSSKibitzManager::FindIdent(std::u16string_view ident) {
    return Shield(-1, [&] { return FParser.FSymbolTable.FindIdent(ToUtf8(ident)); });
}

bool TCSSKibitzManager::FindSymIndex(std::u16string_view ident, int32_t& index) {
    int32_t found = FindIdent(ident);
    if (found < 0) return false;
    index = found;
    return true;
}

void TCSSKibitzManager::SetFilter(std::u16string_view text) {
    Shield([&] { FParser.FSymbolTable.SetFilter(ToUtf8(text)); });
}

std::string TCSSKibitzManager::ItemText(int32_t index) const {
    if (FKibitzPos == kpExpr) return FParser.FSymbolTable.GetKibitzValue(index);
    return FKibitzPos == kpProperty ? FParser.FSymbolTable.GetKibitzProp(index) : std::string();
}

std::u16string TCSSKibitzManager::GetSymbolText(int32_t index) {
    return Shield(std::u16string(), [&] { return ToUtf16(ItemText(index)); });
}

std::u16string TCSSKibitzManager::GetSymbolClassText(int32_t) {
    constexpr std::u16string_view Texts[] = {u"none", u"value", u"property", u"rule", u"comment"};
    return std::u16string(Texts[FKibitzPos]);
}

// ------------------------------------------------------------------------ choice

void TCSSKibitzManager::Done(bool accepted, bool& displayParams) {
    displayParams = false;
    if (!accepted) return;
    Shield([this] {
        if (auto services = GetService<INibCodeInsightServices>()) WriteChoice(*services);
    });
}

void TCSSKibitzManager::WriteChoice(INibCodeInsightServices& services) {
    auto list = services.CurrentList();
    if (!list || list->SelectedIndex() < 0) return;
    auto view = services.CurrentEditView();
    if (!view) return;
    std::u16string text = list->SelectedText();
    TCSSEditor* editor = FKibitzPos == kpExpr ? FParser.FSymbolTable.LookupEditor(ToUtf8(text)) : nullptr;
    if (editor) {
        // Without a value nothing is written, and the word typed stays.
        if (!editor->Execute()) return;
        text = ToUtf16(editor->FResult);
    }
    TCSSChoiceEdit edit = ComposeEdit(*view, std::move(text));
    if (edit.DeletedCount > 0) PositionOf(*view)->DeleteBack(edit.DeletedCount);
    services.InsertText(edit.Text, false);
}

std::optional<TCSSChoiceEdit> TCSSKibitzManager::ComposeChoice(int32_t index) noexcept {
    return Shield(std::optional<TCSSChoiceEdit>(), [&]() -> std::optional<TCSSChoiceEdit> {
        auto services = GetService<INibCodeInsightServices>();
        auto view = services ? services->CurrentEditView() : nullptr;
        if (!view || index < 0 || index >= GetCount()) return std::nullopt;
        std::string text = ItemText(index);
        const TCSSEditor* editor = FKibitzPos == kpExpr ? FParser.FSymbolTable.LookupEditor(text) : nullptr;
        TCSSChoiceEdit edit = ComposeEdit(*view, editor ? std::u16string() : ToUtf16(text));
        if (editor) edit.EditorName = text;
        return edit;
    });
}

// The part of the word in front of the caret goes, what stands behind the caret stays,
// and the closing character is not doubled if only blanks stand before it.
TCSSChoiceEdit TCSSKibitzManager::ComposeEdit(INibEditView& view, std::u16string text) {
    auto position = PositionOf(view);
    std::u16string token = position->TakeText(WordChars, INibEditPosition::TakeBackwards);
    char closer = FKibitzPos == kpProperty ? ':' : ';';
    if (FKibitzPos == kpExpr || FKibitzPos == kpProperty) {
        TCharSet closing = TCharSet("\t ").With({&closer, 1});
        std::u16string behind = position->TakeText(closing, 0);
        if (behind.find(static_cast<char16_t>(closer)) == behind.npos) text += static_cast<char16_t>(closer);
    }
    TCSSChoiceEdit edit;
    edit.DeletedCount = CountCharacters(token);
    edit.DeletedBytes = static_cast<int32_t>(ToUtf8(token).size());
    edit.CaretOffset = CaretOffsetOf(view) - edit.DeletedBytes + static_cast<int32_t>(ToUtf8(text).size());
    edit.Text = std::move(text);
    return edit;
}

}  // namespace caretwell
