#include "stylesheet/CSSCodCmplt.h"

#include <utility>

#include "host/Messages.h"
#include "host/Platform.h"
#include "host/ValueScope.h"
#include "host/ViewHandles.h"
#include "markup/MLBufferProducer.h"
#include "markup/Text.h"
#include "stylesheet/CSSSchemaLoader.h"

namespace caretwell {
namespace {

constexpr char16_t Tab = 9, Return = 13, Escape = 27;

// The host's syntax classes at the caret in which a typed character opens no list.
constexpr int32_t ElementComment = 1, ElementString = 5;

TRef<TCSSKibitzManager>& Manager() {
    static TRef<TCSSKibitzManager> manager;
    return manager;
}

}  // namespace

// ------------------------------------------------------------------- life cycle

TRef<INibCodeInsightManager> CSSLanguageManager() {
    return TEngineCall().IsAllowed() ? &CSSKibitzManager() : nullptr;
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
    Guarded([this] {
        std::string fileName = GetPlatform().SchemaFolder() + "css.xml";
        TCSSReader reader(FParser.FSymbolTable);
        try {
            reader.LoadFromFile(fileName);
        } catch (const ECSSSchemaError& error) {
            ShowMessage(fileName, error.what(), "Error", error.GetLine(), 1);
            reader.Resolve();
        }
        FParser.FSymbolTable.AlphaSort();
    });
}

void TCSSKibitzManager::Report(const std::exception& problem) const {
    ShowMessage({}, problem.what(), "Failure");
}

// -------------------------------------------------------------------- invocation

TCharSet TCSSKibitzManager::EditorTokenValidChars(bool) { return CSSWordChars; }

bool TCSSKibitzManager::HandlesFile(std::string_view fileName) {
    return Guarded(false, [&] {
        auto options = GetService<INibOptionServices>();
        return options && options->MatchExtensions(fileName, options->GetExtensionsForTypeID(OptionSet));
    });
}

// A list opens of itself where a value or a property begins, and elsewhere on request.
void TCSSKibitzManager::GetCodeInsightType(char16_t c, int32_t element, TNibCodeInsightType& type,
                                           TNibInvokeType& invokeType) {
    FInvokeKey = 0;
    type = citNone;
    if (element == ElementComment || element == ElementString) return;
    invokeType = itUser;
    if (c == 0) type = citList;
    if (c == ':' || c == ';') {
        FInvokeKey = c;
        type = citList;
        invokeType = itTrigger;
    }
}

bool TCSSKibitzManager::InvokeCodeCompletion(TNibInvokeType, std::u16string&) {
    return Guarded(false, [this] {
        // The text that a parse is reading may come from a host that calls back.
        if (FIsParsing) return false;
        FCompletionKey = FClosingKey = 0;
        FKibitzPos = kpNone;
        auto view = CurrentView();
        if (!view) return false;
        FIsInsideWord = FInvokeKey == 0 && !TakeBefore(*view, CSSWordChars).empty();
        ParseAtCaret(view);
        return true;
    });
}

void TCSSKibitzManager::ParseAtCaret(const TRef<INibEditView>& view) {
    TValueScope<bool> parsing(FIsParsing, true);
    auto producer = MakeRef<TMLBufferProducer>(view, 0);
    FParser.SetBufferAndPoint(producer, CaretOffsetOf(*view));
    FParser.Parse();
    FKibitzPos = FParser.FKibitzPos;
}

void TCSSKibitzManager::OnEditorKey(char16_t key, bool& closeViewer, bool& accept) {
    accept = key == Tab || key == ' ' || key == ';' || key == Return;
    if (key == ';') FCompletionKey = key;
    closeViewer = accept || key == Escape || FCompletionKey != 0;
    if (closeViewer) FClosingKey = key;
}

TCSSExplanation TCSSKibitzManager::Explain() const noexcept {
    return Guarded(TCSSExplanation(), [this] {
        const TCSSProperty* property = FParser.FSymbolTable.GetKibitzProperty();
        return TCSSExplanation{std::string(KibitzPosName(FKibitzPos)),
                               property ? property->FName : std::string(), FParser.GetLastDeclaration()};
    });
}

// -------------------------------------------------------------------------- list

uint8_t TCSSKibitzManager::GetContext() {
    constexpr uint8_t Contexts[] = {0, 16, 15, 14, 0};  // by FKibitzPos
    return Contexts[FKibitzPos];
}

int32_t TCSSKibitzManager::GetCount() {
    return Guarded(0, [&] {
        if (FKibitzPos == kpExpr) return FParser.FSymbolTable.GetKibitzValueCount();
        return FKibitzPos == kpProperty ? FParser.FSymbolTable.GetKibitzPropCount() : 0;
    });
}

int32_t TCSSKibitzManager::FindIdent(std::u16string_view ident) {
    return Guarded(-1, [&] { return FParser.FSymbolTable.FindIdent(ToUtf8(ident)); });
}

bool TCSSKibitzManager::FindSymIndex(std::u16string_view ident, int32_t& index) {
    int32_t found = FindIdent(ident);
    if (found < 0) return false;
    index = found;
    return true;
}

void TCSSKibitzManager::SetFilter(std::u16string_view text) {
    Guarded([&] { FParser.FSymbolTable.SetFilter(ToUtf8(text)); });
}

std::string TCSSKibitzManager::ItemText(int32_t index) const {
    if (FKibitzPos == kpExpr) return FParser.FSymbolTable.GetKibitzValue(index);
    return FKibitzPos == kpProperty ? FParser.FSymbolTable.GetKibitzProp(index) : std::string();
}

std::u16string TCSSKibitzManager::GetSymbolText(int32_t index) {
    return Guarded(std::u16string(), [&] { return ToUtf16(ItemText(index)); });
}

std::u16string TCSSKibitzManager::GetSymbolClassText(int32_t) {
    constexpr std::u16string_view Texts[] = {u"none", u"value", u"property", u"rule", u"comment"};
    return std::u16string(Texts[FKibitzPos]);
}

}  // namespace caretwell
