// Load, register, work, unload, over and over; what a late host still holds; what happens
// before the beginning and after the end.
#include <caretwell/symbols/FileToSchemaMapper.h>
#include <caretwell/tagmodel/AttributeEditors.h>
#include <malloc.h>

#include "host/BadHost.h"

// The sanitizer's allocator answers here; without it the symbol is null.
extern "C" __attribute__((weak)) size_t __sanitizer_get_current_allocated_bytes();

namespace caretwell::test {
namespace {

/// Counts the calls that come.
class TCountingRegistry final : public INibKibitzRegistry {
public:
    int32_t Register(TRef<INibCodeInsightManager>) override {
        ++FCalls;
        return FRefuses ? -1 : FCalls;
    }
    void Unregister(int32_t index) override {
        FUnregistered.push_back(index);
        if (OnUnregister) OnUnregister();
    }
    int FCalls = 0;
    bool FRefuses = false;
    std::vector<int32_t> FUnregistered;
    std::function<void()> OnUnregister;
};

size_t BytesInUse() {
    return __sanitizer_get_current_allocated_bytes ? __sanitizer_get_current_allocated_bytes()
                                                   : mallinfo2().uordblks;
}

TEST(LifeCycle, AHundredRoundsLeaveNothingBehind) {
    size_t afterTen = 0;
    for (int round = 0; round < 100; ++round) {
        {
            TBadHost host;
            auto view = MakeRef<TPageView>(MakeRef<TPage>("a.html", "<ul></ul>"));
            view->SetCaretOffset(4);
            TEditor editor(host.Engine, view);
            editor.Type(u"<l\r><a ti");
            EXPECT_EQ(view->Page().Text(), "<ul><li><a ti</li></ul>");
            EXPECT_EQ(ProposeSanely(host.Engine, "a.css", "a { co^ }"), "color columns ");
        }
        if (round == 10) afterTen = BytesInUse();
    }
    // The C library counts what its caches hold as used, which moves by some kilobytes; an
    // object left behind in each of ninety rounds is more.
    EXPECT_LE(BytesInUse(), afterTen + 16384);
}

TEST(LifeCycle, TheSchemasThatShipComeAndGo) {
    for (int round = 0; round < 3; ++round) {
        TEngine engine(CARETWELL_SOURCE_DIR "/schemas");
        EXPECT_EQ(ProposeSanely(engine, "a.html", "<ul><^"), "li script template ");
        EXPECT_NE(ProposeSanely(engine, "a.aspx", "<body><^").find("asp:button "), std::string::npos);
        EXPECT_NE(ProposeSanely(engine, "Web.config", "<configuration><^").find("appsettings "),
                  std::string::npos);
    }
}

TEST(LifeCycle, TheRegistryHearsOfEachManagerOnce) {
    const struct {
        bool Registers, Refuses;
        int Calls;
        std::vector<int32_t> Unregistered;
    } cases[] = {{false, false, 0, {}}, {true, false, 2, {1, 2}}, {true, true, 2, {}}};
    for (const auto& c : cases) {
        TCountingRegistry registry;
        registry.FRefuses = c.Refuses;
        SetGlobalKibitzManager(&registry);
        Initialize();
        Initialize();
        if (c.Registers) IDERegister();
        if (c.Registers) IDERegister();  // once is enough
        Finalize();
        Finalize();
        SetGlobalKibitzManager(nullptr);
        EXPECT_EQ(registry.FCalls, c.Calls);
        EXPECT_EQ(registry.FUnregistered, c.Unregistered);
    }
}

TEST(LifeCycle, ALateCallFindsTheManagersAlive) {
    auto platform = MakePlatform({.SchemaFolder = SchemaFolder()});
    SetPlatform(platform.get());
    TCountingRegistry registry;
    int found = 0;
    registry.OnUnregister = [&] {
        found += static_cast<bool>(QueryAs<ISymbolManagerAccessor>(MarkupLanguageManager()));
    };
    SetGlobalKibitzManager(&registry);
    Initialize();
    IDERegister();
    auto* manager = MarkupLanguageManager().Get();
    registry.OnUnregister = [&] {
        found += MarkupLanguageManager() == manager && manager->HandlesFile("a.html");
    };
    Finalize();
    SetGlobalKibitzManager(nullptr);
    SetPlatform(nullptr);
    EXPECT_EQ(found, 2);
}

TEST(LifeCycle, BeforeTheBeginning) {
    auto services = MakeRef<TBadServices>();
    SetTarnwellIDEServices(services);
    auto platform = MakePlatform({.SchemaFolder = SchemaFolder()});
    SetPlatform(platform.get());
    TRegistry registry;
    SetGlobalKibitzManager(&registry);
    IDERegister();
    Finalize();
    EXPECT_FALSE(registry.Find("a.html")) << "nothing registers itself before Initialize";
    for (auto manager : {TRef<INibCodeInsightManager>(MarkupLanguageManager()), CSSLanguageManager()})
        EXPECT_FALSE(WorkThrough(*manager, *services, 0, minimal::Enter));
    Finalize();
    SetGlobalKibitzManager(nullptr);
    SetPlatform(nullptr);
    SetTarnwellIDEServices(nullptr);
}

// All that a host can get hold of, used when the engine is gone, and when it is back.
TEST(LifeCycle, WhatIsHeldAfterTheEndIsEmptyAndHarmless) {
    TRef<INibCodeInsightManager> markup, style;
    TRef<INibMLTag> tag, root;
    TRef<ITagStackIterator> stack;
    TRef<ISymbolManagerIterator> tags;
    TRef<IFileToSchemaMapperService> mapper;
    TRef<INibMLEditorRegistry> editors;
    auto services = MakeRef<TBadServices>();
    auto useAll = [&] {
        for (auto& manager : {markup, style}) {
            services->SetView(MakeRef<TPageView>(MakeRef<TPage>("a.html", "<ul><")));
            EXPECT_FALSE(manager->HandlesFile("a.html") || manager->HandlesFile("a.css"));
            for (char16_t key : {u'\0', u'<', u'&'})
                EXPECT_FALSE(WorkThrough(*manager, *services, key, minimal::Enter));
            TRef<INibCodeInsightSymbolList> list;
            manager->GetSymbolList(list);
            EXPECT_EQ(list->GetCount(), 0);
        }
        EXPECT_EQ(ToUtf8(tag->GetName()), "ul");
        tag->SetShowAttributes(true);
        tag->SetFilter(u"a");
        tag->SetShowAttributes(false);
        tag->SetFilter({});
        EXPECT_EQ(tag->GetTagCount() + tag->GetAttributeCount(), 0);
        EXPECT_EQ(tags->Count(), 0);
        EXPECT_FALSE(tags->Tags(0));
        while (stack->HasNext()) stack->Next()->SetFilter(u"l");
        mapper->GetSchema("a.config");
        editors->GetEditor("color")->Execute(tag.Get(), 0);
    };
    {
        TEngine engine(SchemaFolder(), services);
        EXPECT_NE(ProposeSanely(engine, "a.html", "<ul>^"), "");
        markup = MarkupLanguageManager();
        style = CSSLanguageManager();
        auto parse = QueryAs<INibMLParse>(markup);
        QueryAs<INibMLCodeInsightManager>(markup)->GetTagFromHashList(u"ul", tag);
        stack = parse->GetTagStack();
        tags = parse->GetElements();
        EXPECT_GT(tags->Count(), 10);
        EXPECT_TRUE(stack->HasNext());
        mapper = GetFileToSchemaMapperService();
        editors = GetMLEditorRegistry();
    }
    SetTarnwellIDEServices(services);
    useAll();
    {
        TEngine engine(SchemaFolder(), services);
        useAll();
        EXPECT_EQ(ProposeSanely(engine, "a.html", "<ul>^"), "</ul> li ")
            << "the old manager is not in the way";
    }
    SetTarnwellIDEServices(nullptr);
}

}  // namespace
}  // namespace caretwell::test
