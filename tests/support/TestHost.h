// A host with the small schema of the tests (or another), and the shortest way from a text with a
// caret in it to what the engine says there.
#pragma once

#include <memory>
#include <sstream>
#include <string>
#include <string_view>

#include "insight/HTMLCodCmplt.h"
#include "memory/HostSession.h"
#include "parser/MLParser.h"
#include "symbols/MLParserUnit.h"

namespace caretwell::test {

/// Opens `text`, whose caret is the first '^', in a session of its own.
class TTestHost {
public:
    explicit TTestHost(std::string_view text, const char* fileName = "page.html", THostOptions options = {})
        : TTestHost(std::move(options)) {
        OpenText(std::string(text), fileName);
    }
    /// Without a document; it has to be opened first of all.
    explicit TTestHost(THostOptions options) {
        if (options.SchemaFolder.empty()) options.SchemaFolder = CARETWELL_SOURCE_DIR "/tests/data/schemas";
        options.SettingsFile = "/nonexistent/settings.json";
        FSession = std::make_unique<THostSession>(std::move(options));
        StartMLParser();
        FIndex = FSession->Registry().Register(MarkupLanguageManager());
    }
    ~TTestHost() {
        if (FDocument) FSession->CloseDocument(*FDocument);
        FSession->Registry().Unregister(FIndex);
        ReleaseMarkupLanguageManager();
        EndMLParser();
    }

    /// Opens a text as it is, in the place of the one before.
    void OpenBytes(std::string text, const std::string& fileName) {
        if (FDocument) FSession->CloseDocument(*FDocument);
        FDocument = &FSession->Open(std::move(text), fileName);
    }

    THostSession& Session() { return *FSession; }
    TDocument& Document() { return *FDocument; }
    TEditorDriver& Driver() { return FDocument->Driver(); }
    TMLKibitzManager& Manager() { return static_cast<TMLKibitzManager&>(*MarkupLanguageManager()); }
    TMLParser& Parser() { return MLSymbolManager().GetParser(); }

    /// The same of a text with its caret as '^'; without one the caret is at 0.
    void OpenText(std::string text, const std::string& fileName = "page.html") {
        size_t caret = std::min(text.find('^'), text.size());
        bool hasCaret = caret < text.size();
        OpenBytes(hasCaret ? text.erase(caret, 1) : text, fileName);
        if (hasCaret) FDocument->View().SetCaretOffset(static_cast<int32_t>(caret));
    }

    /// Parses as an invocation does.
    void Parse() {
        TRef<INibEditView> view = &FDocument->View();
        Manager().Parse(view->CaretPos(), MakeRef<TMLBufferProducer>(view, 0), nullptr);
    }
    /// The same without a view: the text as a stream, the column in bytes.
    void ParseStream() {
        const TTextBuffer& text = FDocument->Text();
        int32_t caret = FDocument->View().CaretOffset(), line = text.LineAt(caret);
        std::istringstream stream(text.Text());
        Manager().Parse({static_cast<int16_t>(caret - text.LineStart(line) + 1), line},
                        MakeRef<TMLBufferProducer>(stream, FDocument->FileName(), 0), nullptr);
    }
    /// The names of the open list, separated by blanks.
    std::string Items() {
        std::string names;
        for (const auto& item : Driver().Items()) names += (names.empty() ? "" : " ") + ToUtf8(item.Name);
        return names;
    }
    /// What is offered to a host that asks and shows what it gets; "-" if no list opens.
    std::string Offer() {
        TNibCodeInsightType type = citNone;
        TNibInvokeType invokeType = itUser;
        Manager().GetCodeInsightType(0, 0, type, invokeType);
        std::u16string token;
        if (!Manager().InvokeCodeCompletion(invokeType, token)) return "-";
        std::string names;
        for (int32_t i = 0; i < Manager().GetCount(); ++i) {
            std::u16string name = Manager().GetSymbolText(i);
            if (name.empty()) name = Manager().GetSymbolTypeText(i).substr(1);
            names += (i ? " " : "") + ToUtf8(name);
        }
        return names;
    }
    /// The document with its caret as '^'.
    std::string Text() {
        std::string text = FDocument->Text().Text();
        return text.insert(static_cast<size_t>(FDocument->View().CaretOffset()), "^");
    }

private:
    std::unique_ptr<THostSession> FSession;
    TDocument* FDocument = nullptr;
    int32_t FIndex = -1;
};

/// What the user's command offers at the caret; "-" if no list opens.
inline std::string Propose(std::string_view text, const char* fileName = "page.html") {
    TTestHost host(text, fileName);
    return host.Driver().OpenList() ? host.Items() : "-";
}

}  // namespace caretwell::test
