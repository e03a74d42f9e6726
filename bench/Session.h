// The engine in the embedded host, as the measurements need it: both managers, the shipped
// schemas, and lists that are really there.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "insight/HTMLCodCmplt.h"
#include "lens/LensView.h"
#include "memory/HostSession.h"
#include "package/HTMReg.h"
#include "parser/MLParser.h"

namespace caretwell::bench {

inline std::string SchemaFolder() { return CARETWELL_SOURCE_DIR "/schemas/"; }

class TSession {
public:
    explicit TSession(std::string schemaFolder = SchemaFolder(), bool usesLens = true) {
        THostOptions options{.SchemaFolder = std::move(schemaFolder),
                             .SettingsFile = "/nonexistent/settings.json",
                             .Settings = {{"Simple Typed Elements", "True"}}};
        if (usesLens)
            options.Lens.Show = [](TRef<TEditView> view,
                                   INibCodeInsightManager& manager) -> TRef<INibEditView> {
                if (manager.GetName() != "Style Sheet") return nullptr;
                return MakeRef<TLensView>(std::move(view), lkStyleSheet);
            };
        FHost = std::make_unique<THostSession>(std::move(options));
        Initialize();
        IDERegister();
    }
    ~TSession() {
        if (FHost->Current()) FHost->Current()->Driver().Dismiss();
        Finalize();
    }
    TSession(const TSession&) = delete;
    TSession& operator=(const TSession&) = delete;

    TDocument& Open(std::string text, const std::string& name, size_t caret) {
        TDocument& document = FHost->Open(std::move(text), name);
        document.View().SetCaretOffset(static_cast<int32_t>(caret));
        return document;
    }
    THostSession& Host() { return *FHost; }
    TMLParser& Parser() { return MLSymbolManager().GetParser(); }

private:
    std::unique_ptr<THostSession> FHost;
};

/// Offset of the first `before` behind the middle of a text; at its front, or at its end if
/// isBehind.
inline size_t FindInMiddle(std::string_view text, std::string_view before, bool isBehind = false) {
    size_t found = text.find(before, text.size() / 2);
    return found + (isBehind ? before.size() : 0);
}

/// What an editor reads to show the list: its size and the lines of one screen.
inline size_t ReadScreen(TEditorDriver& driver) {
    constexpr int32_t linesOnScreen = 20;
    size_t units = 0;
    for (int32_t i = 0; i < std::min(driver.ItemCount(), linesOnScreen); ++i)
        units += driver.Item(i).Name.size();
    return units;
}

}  // namespace caretwell::bench
