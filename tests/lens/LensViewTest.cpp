// The style sheet manager behind the lens: what it answers on sheets of today and on
// pages, and that it writes into the document itself.
#include <gtest/gtest.h>

#include "lens/LensView.h"
#include "memory/HostSession.h"
#include "stylesheet/CSSCodCmplt.h"

namespace caretwell {
namespace {

class TLensHost {
public:
    TLensHost()
        : FSession({.SchemaFolder = CARETWELL_SOURCE_DIR "/schemas",
                    .SettingsFile = "/nonexistent",
                    .Lens = {.NameAt = [](TEditView&) { return std::string("x.css"); },
                             .Show =
                                 [this](TRef<TEditView> view, INibCodeInsightManager&) {
                                     return TRef<INibEditView>(MakeRef<TLensView>(std::move(view), FKind));
                                 }}}) {
        FIndex = FSession.Registry().Register(CSSLanguageManager());
    }
    ~TLensHost() {
        FSession.Registry().Unregister(FIndex);
        ReleaseCSSLanguageManager();
    }

    TDocument& Open(std::string text, TLensKind kind) {
        if (auto* last = FSession.Current()) FSession.CloseDocument(*last);
        FKind = kind;
        const auto caret = text.find('^');
        text.erase(caret, 1);
        TDocument& document = FSession.Open(std::move(text), kind == lkMarkup ? "a.html" : "a.css");
        document.View().SetCaretOffset(static_cast<int32_t>(caret));
        return document;
    }

    /// What the manager sees: "kpExpr color", or the position alone.
    std::string Answer(const std::string& text, TLensKind kind) {
        TDocument& document = Open(text, kind);
        document.Driver().OpenList();
        const auto seen = static_cast<TCSSKibitzManager*>(CSSLanguageManager().Get())->Explain();
        return seen.Position + (seen.Property.empty() ? "" : " " + seen.Property) +
               (document.Driver().IsOpen() ? "" : " nothing");
    }

    std::string Choose(const std::string& text, TLensKind kind, std::u16string_view item) {
        TDocument& document = Open(text, kind);
        document.Driver().OpenList();
        document.Driver().Select(item);
        document.Driver().PressKey(ekEnter);
        return document.Text().Text();
    }

private:
    TLensKind FKind = lkStyleSheet;
    THostSession FSession;
    int32_t FIndex = -1;
};

struct TRow {
    TLensKind FKind;
    const char* FText;
    const char* FExpect;
};

TEST(LensView, TheManagerAnswersAsIfTheSheetWerePlain) {
    constexpr TRow rows[] = {
        {lkStyleSheet, "@layer a { .b { &:hover { color: r^ } } }", "kpExpr color"},
        {lkStyleSheet, ".b { --x: {}; transition: all .3s cubic-bezier(0, -1, 0, 1), ^", "kpExpr transition"},
        {lkStyleSheet, ".b { *width: 1px; -webkit-box-shadow: 0 0 1px -1px ^", "kpExpr box-shadow"},
        {lkStyleSheet, ":root { --main: ^ }", "kpExpr all"},
        {lkStyleSheet, ".b { color: red; .c { top: 0 } wid^", "kpProperty"},
        {lkStyleSheet, "@supports (--x: 1) and (not (y: 2)) { .b^ { } }", "kpRule nothing"},
        {lkStyleSheet, ".b { } /* ^ */", "kpComment nothing"},
        {lkStyleSheet, ".b { content: '^' }", "kpRule nothing"},
        {lkMarkup, "<style>\n.b { width: ^ }\n</style>", "kpExpr width"},
        {lkMarkup, "<p style='width: 1px; ^'>", "kpProperty width"},
        {lkMarkup, "<p style=\"font-family: &quot;A&quot;, ^\">", "kpExpr font-family"},
    };
    TLensHost host;
    for (const auto& row : rows) EXPECT_EQ(host.Answer(row.FText, row.FKind), row.FExpect) << row.FText;
}

TEST(LensView, ChoicesGoIntoTheDocument) {
    const struct {
        TLensKind FKind;
        const char* FText;
        const char16_t* FItem;
        const char* FExpect;
    } rows[] = {
        {lkStyleSheet, ".a { &:hover { /* \xC3\xA9 */ col^ } }", u"color",
         ".a { &:hover { /* \xC3\xA9 */ color: } }"},
        {lkMarkup, "<p style=\"display: inl^\">\xC3\xA9</p>", u"inline-flex",
         "<p style=\"display: inline-flex;\">\xC3\xA9</p>"},
        {lkMarkup, "<style>a { float: ^; }</style>", u"left", "<style>a { float: left; }</style>"},
    };
    TLensHost host;
    for (const auto& row : rows) EXPECT_EQ(host.Choose(row.FText, row.FKind, row.FItem), row.FExpect);
}

}  // namespace
}  // namespace caretwell
