// The engine in the embedded host: the package started, the documents of a run, and of
// the two managers the one that is needed, since each costs the reading of its schema.
//
//     TEngine engine({.SchemaFolder = "schemas"});
//     TDocument& page = engine.Open(text, "page.html");
//     page.Driver().OpenList();
//
// Style text is seen through the lens: in a style sheet always, in a page where a caret
// stands in a style element or attribute.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "insight/HTMLCodCmplt.h"
#include "memory/HostSession.h"

namespace caretwell {

struct TEngineOptions {
    std::string SchemaFolder{};                               ///< empty: the one that ships
    std::vector<std::pair<std::string, std::string>> Maps{};  ///< extension, schema file of the folder
    std::vector<std::pair<std::string, std::string>> Settings{};
    std::map<std::string, std::string> Answers{};
    TDialogAnswers::TAsk Ask{};
    bool UsesLens = true;
    std::function<void(std::string_view)> Warn{};
    std::function<void(const TMessage&)> Echo{};
};

class TEngine {
public:
    /// Raises TFailure if an extension to be mapped is taken.
    explicit TEngine(const TEngineOptions& options);
    ~TEngine();
    TEngine(const TEngine&) = delete;
    TEngine& operator=(const TEngine&) = delete;

    THostSession& Host() { return *FHost; }
    /// Opens a document for the manager that its name asks for.
    TDocument& Open(std::string text, std::string fileName);
    /// Parses the document as for a list, but makes none: the state of the parser is that
    /// of the caret afterwards, on the table of the document's schema. Of markup only.
    void Parse(TDocument& document);

    // The managers, made and registered when first asked for.
    INibMLCodeInsightManager& Markup();
    INibCodeInsightManager& StyleSheet();
    TMLSymbolManager& Symbols();

    bool IsStyleSheet(std::string_view fileName) const;
    std::string SchemaFolder() { return FHost->Platform().SchemaFolder(); }

private:
    TEditorLens MakeLens();
    std::string NameAt(TEditView& view);
    static bool IsPage(std::string_view fileName);
    std::optional<std::string> GetSetting(std::string_view name);
    void SetTagCase(std::string_view fileName);

    bool FUsesLens;
    std::unique_ptr<THostSession> FHost;
    TRef<INibMLCodeInsightManager> FMarkup;
    TRef<INibCodeInsightManager> FStyleSheet;
    std::vector<int32_t> FRegistered;
};

/// True for one of the two managers.
bool IsStyleSheetManager(INibCodeInsightManager& manager);

}  // namespace caretwell
