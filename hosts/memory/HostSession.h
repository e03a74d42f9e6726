// The embedded host as one object: platform, services, registry, settings and the
// documents that are open. This is the face of hosts/memory; a command, a test or a
// language server begins here.
//
//     THostSession host({.SchemaFolder = "schemas"});
//     ... register the managers with GlobalKibitzManager() ...
//     TDocument& page = host.Open("<p>a</p>", "page.html");
//     page.View().SetCaretOffset(3);
//     page.Driver().TypeChar('<');
//     for (const TListItem& item : page.Driver().Items()) ...
//
// One session at a time: the engine finds its host through process-wide roots. They
// are set by the constructor and taken back by the destructor, so sessions may follow
// each other. The managers leave the registry before the session ends.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "memory/EditorDriver.h"
#include "memory/KibitzRegistry.h"
#include "memory/MemoryPlatform.h"
#include "memory/Services.h"
#include "memory/Settings.h"

namespace caretwell {

struct THostOptions {
    std::string SchemaFolder{};  ///< empty: beside the folder of the executable
    std::string SettingsFile = DefaultSettingsFile();
    std::vector<std::pair<std::string, std::string>> Settings{};  ///< for this run, by name; the last wins
    std::map<std::string, std::string> Answers{};                 ///< of dialogs, by name: color, uri, length
    TDialogAnswers::TAsk Ask{};                                   ///< for a dialog without an answer
    std::function<void(std::string_view line)> Warn{};            ///< what the host itself has to say
    std::function<void(const TMessage&)> Echo{};                  ///< each message of the engine as it comes
    TEditorLens Lens{};                                           ///< between every document and the engine
};

/// A file that is open, with its view and the driver of its keys.
class TDocument {
public:
    TDocument(std::string text, std::string fileName, TKibitzRegistry& registry,
              TRef<TMemoryServices> services, TEditorDriver::TWarning warning);

    const std::string& FileName() const { return FFileName; }
    TTextBuffer& Text() { return FBuffer->Text(); }
    TRef<TEditBuffer> Buffer() const { return FBuffer; }
    TEditView& View() { return *FView; }
    TEditorDriver& Driver() { return FDriver; }

private:
    std::string FFileName;
    TRef<TEditBuffer> FBuffer;
    TRef<TEditView> FView;
    TEditorDriver FDriver;
};

class THostSession {
public:
    explicit THostSession(THostOptions options);
    ~THostSession();
    THostSession(const THostSession&) = delete;
    THostSession& operator=(const THostSession&) = delete;

    /// Opens a text under a name and makes it current. Caret at 0. The session owns
    /// it; it lives until CloseDocument or the end of the session.
    TDocument& Open(std::string text, std::string fileName);
    /// The list that is open in another document is dismissed.
    void Activate(TDocument& document);
    /// Dismisses its list and closes its view. The document is gone afterwards.
    void CloseDocument(TDocument& document);
    /// Null if no document is open.
    TDocument* Current() { return FCurrent; }

    TMemoryPlatform& Platform() { return *FPlatform; }
    TMemoryServices& Services() { return *FServices; }
    TMessageView& Messages() { return FServices->Messages(); }
    TKibitzRegistry& Registry() { return FRegistry; }
    TSettingsStore& Settings() { return *FSettings; }

private:
    void SetCurrent(TDocument* document);

    THostOptions FOptions;
    TRef<TMemoryServices> FServices;
    std::unique_ptr<TSettingsStore> FSettings;
    std::unique_ptr<TScriptedForms> FForms;
    std::unique_ptr<TMemoryPlatform> FPlatform;
    TKibitzRegistry FRegistry;
    std::vector<std::unique_ptr<TDocument>> FDocuments;
    TDocument* FCurrent = nullptr;
};

}  // namespace caretwell
