#include "cli/Engine.h"

#include <algorithm>

#include "cli/Failure.h"
#include "host/Paths.h"
#include "lens/Lens.h"
#include "lens/LensView.h"
#include "markup/DocumentKind.h"
#include "markup/Text.h"
#include "package/HTMReg.h"
#include "stylesheet/CSSCodCmplt.h"
#include "symbols/FileToSchemaMapper.h"

namespace caretwell {
namespace {

constexpr std::string_view StyleSheetOptions = "Tarnwell.EditOptions.StyleSheet";
constexpr std::string_view SettingsKey = "\\Code Insight";
constexpr std::string_view SimpleTypedElements = "Simple Typed Elements";

// A name by which the registry finds the style sheet manager.
constexpr std::string_view StyleName = "style.css";

void RegisterMaps(const std::vector<std::pair<std::string, std::string>>& maps) {
    auto mapper = GetFileToSchemaMapperService();
    for (const auto& [extension, file] : maps)
        if (!mapper->RegisterSchema(extension, file))
            throw TFailure(esWords, std::string("--map ").append(extension).append("=").append(file) +
                                        ": the extension has " +
                                        (file.empty() ? "no schema" : "a schema already"));
}

}  // namespace

bool IsStyleSheetManager(INibCodeInsightManager& manager) {
    return manager.GetOptionSetName() == StyleSheetOptions;
}

TEngine::TEngine(const TEngineOptions& options) : FUsesLens(options.UsesLens) {
    FHost = std::make_unique<THostSession>(THostOptions{.SchemaFolder = options.SchemaFolder,
                                                        .Settings = options.Settings,
                                                        .Answers = options.Answers,
                                                        .Ask = options.Ask,
                                                        .Warn = options.Warn,
                                                        .Echo = options.Echo,
                                                        .Lens = MakeLens()});
    Initialize();
    try {
        RegisterMaps(options.Maps);
    } catch (...) {
        Finalize();
        throw;
    }
    // Schemas of today declare most elements with simple types; without them a document
    // could not be written. A user may still want the strict table.
    if (!GetSetting(SimpleTypedElements)) FHost->Settings().Override(SimpleTypedElements, "True");
}

TEngine::~TEngine() {
    for (int32_t index : FRegistered) FHost->Registry().Unregister(index);
    FMarkup = nullptr;
    FStyleSheet = nullptr;
    Finalize();
}

TDocument& TEngine::Open(std::string text, std::string fileName) {
    if (IsStyleSheet(fileName)) {
        StyleSheet();
    } else {
        Markup();
        SetTagCase(fileName);
    }
    return FHost->Open(std::move(text), std::move(fileName));
}

void TEngine::Parse(TDocument& document) {
    TRef<INibEditView> view(&document.View());
    Markup().Parse(view->CaretPos(), MakeRef<TMLBufferProducer>(view, 0), nullptr);
}

INibMLCodeInsightManager& TEngine::Markup() {
    if (!FMarkup) {
        FMarkup = MarkupLanguageManager();
        FRegistered.push_back(FHost->Registry().Register(FMarkup));
        auto quote = GetSetting("Auto Quote");
        FMarkup->SetAutoQuote(quote && SameText(std::string_view(*quote), std::string_view("True")));
    }
    return *FMarkup;
}

INibCodeInsightManager& TEngine::StyleSheet() {
    if (!FStyleSheet) {
        FStyleSheet = CSSLanguageManager();
        FRegistered.push_back(FHost->Registry().Register(FStyleSheet));
    }
    return *FStyleSheet;
}

TMLSymbolManager& TEngine::Symbols() {
    return *QueryAs<ISymbolManagerAccessor>(&Markup())->GetSymbolManager();
}

bool TEngine::IsStyleSheet(std::string_view fileName) const {
    auto options = GetService<INibOptionServices>();
    return options->MatchExtensions(fileName, options->GetExtensionsForTypeID(StyleSheetOptions));
}

TEditorLens TEngine::MakeLens() {
    if (!FUsesLens) return {};
    return {.NameAt = [this](TEditView& view) { return NameAt(view); },
            .Show = [this](TRef<TEditView> view, INibCodeInsightManager& manager) -> TRef<INibEditView> {
                if (!IsStyleSheetManager(manager)) return nullptr;
                bool isSheet = IsStyleSheet(view->Buffer()->FileName());
                return MakeRef<TLensView>(std::move(view), isSheet ? lkStyleSheet : lkMarkup);
            }};
}

// In the pages of a browser, and in the sheets that make them, a style attribute holds style
// text. In other XML it holds what its schema says.
bool TEngine::IsPage(std::string_view fileName) {
    std::string extension = ExtensionOf(fileName);
    bool isOther = extension == ".resx" || extension == ".wml" ||
                   (extension != ".svg" && GetFileToSchemaMapperService()->HasSchema(fileName));
    return !isOther;
}

// Where the style sheet manager has nothing to offer, in a selector say, the page's own
// keeps the caret.
std::string TEngine::NameAt(TEditView& view) {
    std::string name = view.Buffer()->FileName();
    if (IsStyleSheet(name) || !IsPage(name)) return name;
    auto place = LookThrough(view.Text().Text(), lkMarkup, static_cast<size_t>(view.CaretOffset())).FPlace;
    if (place != lpName && place != lpValue) return name;
    StyleSheet();
    return std::string(StyleName);
}

std::optional<std::string> TEngine::GetSetting(std::string_view name) {
    std::string key = FHost->Services().BaseRegistryKey() + std::string(SettingsKey);
    return FHost->Settings().ReadString(key, name);
}

// Names are shown as the schema spells them where their case counts. The names of HTML
// may be written in any, and the engine shows them in small letters.
void TEngine::SetTagCase(std::string_view fileName) {
    bool isCased = GetFileToSchemaMapperService()->HasSchema(fileName) ||
                   GetDocumentKind(ExtensionOf(fileName)).KeepsCase;
    FMarkup->SetTagCase(isCased ? tcNormal : tcLowerCase);
}

}  // namespace caretwell
