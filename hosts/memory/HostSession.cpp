#include "memory/HostSession.h"

namespace caretwell {
namespace {

// The folder above the schema folder, which is given with its separator.
std::string RootOf(const std::string& schemaFolder) {
    size_t end = schemaFolder.find_last_not_of('/');
    size_t slash = schemaFolder.rfind('/', end);
    return slash == std::string::npos ? "./" : schemaFolder.substr(0, slash + 1);
}

}  // namespace

TDocument::TDocument(std::string text, std::string fileName, TKibitzRegistry& registry,
                     TRef<TMemoryServices> services, TEditorDriver::TWarning warning)
    : FFileName(std::move(fileName)),
      FBuffer(MakeRef<TEditBuffer>(std::move(text), FFileName)),
      FView(MakeRef<TEditView>(FBuffer)),
      FDriver(FView, registry, std::move(services), std::move(warning)) {}

THostSession::THostSession(THostOptions options) : FOptions(std::move(options)) {
    FSettings = std::make_unique<TSettingsStore>(FOptions.SettingsFile, FOptions.Warn);
    for (const auto& [name, value] : FOptions.Settings) FSettings->Override(name, value);
    FServices = MakeRef<TMemoryServices>();
    FForms = std::make_unique<TScriptedForms>(FServices->Answers());
    FPlatform = std::make_unique<TMemoryPlatform>(
        TPlatformOptions{FOptions.SchemaFolder, FSettings.get(), FForms.get()});
    FServices->SetRootDirectory(RootOf(FPlatform->SchemaFolder()));
    for (const auto& [name, value] : FOptions.Answers) FServices->Answers().Set(name, value);
    FServices->Answers().SetAsk(FOptions.Ask);
    FServices->Messages().SetEcho(FOptions.Echo);
    FRegistry.SetOnUnregister([this] {
        for (auto& document : FDocuments) document->Driver().Detach();
    });

    SetTarnwellIDEServices(FServices);
    SetPlatform(FPlatform.get());
    SetGlobalKibitzManager(&FRegistry);
}

THostSession::~THostSession() {
    if (FCurrent) FCurrent->Driver().Dismiss();
    SetCurrent(nullptr);
    FDocuments.clear();
    SetGlobalKibitzManager(nullptr);
    SetPlatform(nullptr);
    SetTarnwellIDEServices(nullptr);
}

TDocument& THostSession::Open(std::string text, std::string fileName) {
    FDocuments.push_back(std::make_unique<TDocument>(std::move(text), std::move(fileName), FRegistry,
                                                     FServices, FOptions.Warn));
    FDocuments.back()->Driver().SetLens(FOptions.Lens);
    Activate(*FDocuments.back());
    return *FDocuments.back();
}

void THostSession::Activate(TDocument& document) {
    if (FCurrent == &document) return;
    if (FCurrent) FCurrent->Driver().Dismiss();
    SetCurrent(&document);
}

void THostSession::CloseDocument(TDocument& document) {
    document.Driver().Dismiss();
    document.View().Close();
    if (FCurrent == &document) SetCurrent(nullptr);
    std::erase_if(FDocuments, [&](const auto& open) { return open.get() == &document; });
}

void THostSession::SetCurrent(TDocument* document) {
    FCurrent = document;
    FServices->SetCurrentView(document ? TRef<TEditView>(&document->View()) : nullptr);
}

}  // namespace caretwell
