// Every bad use of the contract: answered by the quiet case, or refused with a message;
// nothing crashes, and the engine serves a sane host afterwards.
#include <thread>

#include "host/BadHost.h"

namespace caretwell::test {
namespace {

TRef<INibCodeInsightManager> ManagerFor(TBadHost& host, const char* fileName) {
    auto manager = host.Engine.Registry.Find(fileName);
    EXPECT_TRUE(manager) << fileName;
    return manager;
}

constexpr char16_t CloseKeys[] = {minimal::Enter, 9, ' ', '>', '=', ';', 27};

/// Every list of the documents, ended by every key.
template <class TAction>
void ForEachList(TBadHost& host, TAction action) {
    for (const auto& document : Documents)
        for (char16_t closeKey : CloseKeys) {
            auto view = host.Open(document.FileName, document.Text);
            action(*view, *ManagerFor(host, document.FileName), document, closeKey);
        }
}

// ---- faults of views, buffers, services

enum TExpect { Opens, Refuses, Either };

TEST(BadUse, OneFaultAtATime) {
    const struct {
        std::vector<std::string_view> Faults;
        TExpect List;     // for the first document, a plain element list
        bool Writes;      // whether any document was written to
        size_t Messages;  // of the first document, at most
    } cases[] = {
        {{"", "no buffer", "no reader", "no writer", "no list", "a read of more than was asked for",
          "a read of less than nothing"},
         Opens,
         true,
         0},
        {{"a selection out of the list"}, Opens, true, 0},
        {{"no block"}, Opens, true, 1},
        {{"a write that throws"}, Opens, true, 2},
        {{"places far outside", "places below 0"}, Either, true, 1},
        {{"no position", "a read that throws"}, Refuses, true, 2},
        {{"no view"}, Refuses, false, 0},
        {{"places that throw"}, Refuses, false, 2},
    };
    auto check = [](const auto& c, std::string_view fault) {
        TBadHost host;
        bool wrote = false;
        ProposeSanely(host.Engine, "a.html", "<ul>^");  // the schema is read by a sane host
        ForEachList(host, [&](TBadView& view, auto& manager, const TDocumentCase& document, char16_t key) {
            std::string before = view.Page().Text();
            host.Services->Behaviour.Fault = fault;
            host.Services->Messages.clear();
            bool opened = WorkThrough(manager, *host.Services, document.Key, key);
            host.Services->Behaviour.Fault = "";
            wrote = wrote || view.Page().Text() != before;
            if (&document != Documents || key != minimal::Enter) return;
            EXPECT_TRUE(c.List == Either || opened == (c.List == Opens)) << fault;
            EXPECT_LE(host.Services->Messages.size(), c.Messages) << fault;
        });
        EXPECT_EQ(wrote, c.Writes) << fault;
        EXPECT_TRUE(host.Services->Behaviour.IsMet || fault.empty()) << fault;
        ExpectUnharmed(host, fault);
    };
    for (const auto& c : cases)
        for (std::string_view fault : c.Faults) check(c, fault);
}

TEST(BadUse, ATextWithoutAnEndIsReadToTheLastOffset) {
    TBadHost host;
    host.Open("a.css", "^");
    host.Services->Behaviour.Fault = "a text without an end";
    auto manager = ManagerFor(host, "a.css");
    std::u16string token;
    manager->InvokeCodeCompletion(itUser, token);
    ExpectUnharmed(host, "endless");
}

// ---- services that are not there, or go away

class TNothing final : public TImplements<INibCSSProvider> {};

TEST(BadUse, ServicesAreMissing) {
    TBadHost host;
    TRef<IRefCounted> given = TarnwellIDEServices();
    TRef<IRefCounted> roots[] = {nullptr, static_cast<INibCSSProvider*>(MakeRef<TNothing>().Get())};
    for (auto& root : roots) {
        for (const auto& document : Documents) {
            host.Open(document.FileName, document.Text);
            auto manager = ManagerFor(host, document.FileName);
            SetTarnwellIDEServices(root);
            EXPECT_FALSE(WorkThrough(*manager, *host.Services, document.Key, minimal::Enter))
                << document.Text;
            SetTarnwellIDEServices(given);
            // And between the list and its end.
            WorkThrough(*manager, *host.Services, document.Key, minimal::Enter,
                        [&] { SetTarnwellIDEServices(root); });
            SetTarnwellIDEServices(given);
        }
    }
    ExpectUnharmed(host, "without services");
}

TEST(BadUse, WhatAListIsAboutGoesAwayWhileItIsOpen) {
    TBadHost host;
    const struct {
        const char* Name;
        bool StillWrites;
        std::function<void(TBadView&)> Happens;
    } cases[] = {
        {"the view is closed", false, [&](TBadView&) { host.Services->SetView(nullptr); }},
        {"another view has the focus", false, [&](TBadView&) { host.Open("b.html", "^"); }},
        {"another file of the same name has it", false, [&](TBadView&) { host.Open("a.html", "^"); }},
        {"the platform goes", true, [](TBadView&) { SetPlatform(nullptr); }},
        {"the buffer shrinks", true, [](TBadView& v) { v.Page().Replace(1, v.Page().Size(), ""); }},
    };
    for (const auto& c : cases)
        ForEachList(host, [&](TBadView& view, auto& manager, const TDocumentCase& document, char16_t key) {
            IPlatform* platform = &GetPlatform();
            std::string atOpen;
            WorkThrough(manager, *host.Services, document.Key, key, [&] {
                atOpen = view.Page().Text();
                c.Happens(view);
            });
            SetPlatform(platform);
            EXPECT_TRUE(view.Page().Text() == atOpen || c.StillWrites) << c.Name << ", " << document.Text;
            EXPECT_LE(view.Page().Size(), 128) << c.Name << ", " << document.Text;
        });
    ExpectUnharmed(host, "things going away");
}

// ---- calls from inside a call

TEST(BadUse, CallsOutOfAnyCall) {
    const std::string_view places[] = {
        "Read",        "CreateWriter", "Repaint",   "InvokeCompletion", "CurrentEditView",
        "CurrentList", "InsertText",   "AddMessage"};
    for (std::string_view place : places) {
        TBadHost host;
        auto markup = ManagerFor(host, "a.html"), style = ManagerFor(host, "a.css");
        bool isInside = false;
        int entered = 0;
        auto callEverything = [&](std::string_view where) {
            if (where != place || isInside || entered > 2000) return;
            ++entered;
            isInside = true;
            for (auto& manager : {markup, style}) {
                std::u16string token;
                bool displayParams = false;
                manager->InvokeCodeCompletion(itUser, token);
                TRef<INibCodeInsightSymbolList> list;
                manager->GetSymbolList(list);
                for (int32_t i = 0; i < list->GetCount(); ++i) list->GetSymbolText(i);
                list->SetFilter(u"a");
                manager->Done(true, displayParams);
                manager->Done(false, displayParams);
            }
            auto parsing = QueryAs<INibMLCodeInsightManager>(markup);
            std::istringstream text("<table><tr><td bgcolor=");
            parsing->Parse({9, 9}, MakeRef<TMLBufferProducer>(text, "c.html", 0), nullptr);
            Initialize();
            IDERegister();
            Finalize();
            isInside = false;
        };
        ForEachList(host, [&](TBadView& view, auto& manager, const TDocumentCase& document, char16_t key) {
            // A message comes when a schema is missing.
            if (place == "AddMessage") view.Page().Replace(0, 0, "<!DOCTYPE a SYSTEM 'none.dtd'>");
            host.Services->Behaviour.Hook = callEverything;
            WorkThrough(manager, *host.Services, document.Key, key);
            host.Services->Behaviour.Hook = nullptr;
        });
        EXPECT_GT(entered, 0) << place;
        auto refusals = std::count(host.Services->Messages.begin(), host.Services->Messages.end(),
                                   "Finalize was called from inside a call of the engine and did nothing");
        EXPECT_EQ(refusals, entered) << place;
        ExpectUnharmed(host, place);
    }
}

/// An observer that does what the caller likes in the middle of a parse.
class TObserver final : public TImplements<INibMLElementCallback> {
public:
    explicit TObserver(std::function<void()> action) : FAction(std::move(action)) {}
    void ElementParsed(void*, INibMLMarkupPos*, TTagType, int32_t, int32_t, bool&) override {
        ++FCount;
        FAction();
    }
    void Invalidate() override { FAction(); }
    int FCount = 0;

private:
    std::function<void()> FAction;
};

TEST(BadUse, AnObserverThatInterferes) {
    TBadHost host;
    host.Open("a.html", "<ul><li>a<li target='x'>b<p>^</ul>");
    auto manager = QueryAs<INibMLCodeInsightManager>(ManagerFor(host, "a.html"));
    std::u16string token;
    auto parse = QueryAs<INibMLParse>(manager);
    const struct {
        const char* Name;
        std::function<void()> Action;
    } cases[] = {
        {"throws", [] { throw std::runtime_error("no"); }},
        {"parses", [&] { manager->InvokeCodeCompletion(itUser, token); }},
        {"unloads", [] { Finalize(); }},
        {"reads the list", [&] { WorkThrough(*manager, *host.Services, 0, minimal::Enter); }},
    };
    for (const auto& c : cases) {
        auto observer = MakeRef<TObserver>(c.Action);
        parse->AddCallback(observer.Get());
        manager->InvokeCodeCompletion(itUser, token);
        EXPECT_GT(observer->FCount, 0) << c.Name;
        parse->RemoveCallback(observer.Get());
        ExpectUnharmed(host, c.Name);
        host.Open("a.html", "<ul><li>a<li target='x'>b<p>^</ul>");
    }
}

// ---- a second thread

TEST(BadUse, ASecondThreadIsRefused) {
    TBadHost host;
    auto markup = ManagerFor(host, "a.html"), style = ManagerFor(host, "a.css");
    TRef<INibCodeInsightSymbolList> lists[2];
    markup->GetSymbolList(lists[0]);
    style->GetSymbolList(lists[1]);
    INibCodeInsightManager* managers[] = {markup.Get(), style.Get()};
    host.Open("a.html", "<ul>^");
    int answered = 0;
    std::thread other([&] {
        for (int round = 0; round < 200; ++round)
            for (int i : {0, 1}) {
                std::u16string token;
                bool displayParams = false;
                answered += managers[i]->InvokeCodeCompletion(itUser, token);
                answered += lists[i]->GetCount() + lists[i]->FindIdent(u"a") + 1;
                answered += !lists[i]->GetSymbolText(0).empty() + managers[i]->HandlesFile("a.html");
                managers[i]->Done(true, displayParams);
                answered +=
                    static_cast<bool>(MarkupLanguageManager()) + static_cast<bool>(CSSLanguageManager());
                Initialize();
                IDERegister();
                Finalize();
            }
    });
    for (int round = 0; round < 50; ++round) ExpectUnharmed(host, "beside a thread");
    other.join();
    EXPECT_EQ(answered, 0);
    EXPECT_TRUE(host.Services->Messages.empty());
    ExpectUnharmed(host, "after a thread");
}

}  // namespace
}  // namespace caretwell::test
