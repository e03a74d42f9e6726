// A host that breaks its side of the contract, one fault at a time, around the host of the
// examples; and a way through every call that an editor makes.
#pragma once

#include <caretwell/insight/MLCodeInsight.h>
#include <caretwell/stylesheet/CSSLanguage.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <limits>
#include <stdexcept>

#include "examples/minimal-host/Editor.h"
#include "support/TemporaryFolder.h"

namespace caretwell::test {

using minimal::TEditor;
using minimal::TEngine;
using minimal::TPage;
using minimal::TPageView;
using minimal::TRegistry;

/// What is selected in the list, as an editor without a session has to keep it.
class TSelection final : public TImplements<INibInsightList> {
public:
    void Select(int32_t index, std::u16string text) {
        FIndex = index;
        FText = std::move(text);
    }
    std::u16string SelectedText() override { return FText; }
    int32_t SelectedIndex() override { return FIndex; }

private:
    int32_t FIndex = -1;
    std::u16string FText;
};

/// Called at every call of the engine into the host, with the name of the operation.
using THook = std::function<void(std::string_view where)>;

struct TBehaviour {
    std::string_view Fault;  ///< by its name, one at a time
    THook Hook;
    mutable bool IsMet = false;  ///< the engine has run into it
    bool Is(std::string_view fault) const {
        IsMet = IsMet || fault == Fault;
        return fault == Fault;
    }
    void Enter(std::string_view where) const {
        if (Hook) Hook(where);
    }
};

class TBadReader final : public TImplements<INibEditReader> {
public:
    TBadReader(TRef<INibEditReader> reader, const TBehaviour& behaviour)
        : FReader(std::move(reader)), FBehaviour(behaviour) {}
    int32_t Read(int32_t offset, char* dest, int32_t count) override {
        FBehaviour.Enter("Read");
        if (FBehaviour.Is("a read that throws")) throw std::runtime_error("the disk is gone");
        if (FBehaviour.Is("a read of less than nothing")) return -1;
        if (FBehaviour.Is("a text without an end")) {
            std::memset(dest, ' ', static_cast<size_t>(count));
            return count;
        }
        int32_t read = FReader->Read(offset, dest, count);
        return FBehaviour.Is("a read of more than was asked for") && read > 0 ? read + 1'000'000 : read;
    }

private:
    TRef<INibEditReader> FReader;
    const TBehaviour& FBehaviour;
};

class TBadPage final : public TPage {
public:
    TBadPage(std::string fileName, std::string text, const TBehaviour& behaviour)
        : TPage(std::move(fileName), std::move(text)), FBehaviour(behaviour) {}
    TRef<INibEditReader> CreateReader() override {
        if (FBehaviour.Is("no reader")) return nullptr;
        return MakeRef<TBadReader>(TPage::CreateReader(), FBehaviour);
    }
    TRef<INibEditWriter> CreateWriter() override {
        FBehaviour.Enter("CreateWriter");
        if (FBehaviour.Is("a write that throws")) throw std::runtime_error("the buffer is locked");
        return FBehaviour.Is("no writer") ? nullptr : TPage::CreateWriter();
    }

private:
    const TBehaviour& FBehaviour;
};

class TBadView final : public TPageView {
public:
    TBadView(TRef<TPage> page, const TBehaviour& behaviour)
        : TPageView(std::move(page)), FBehaviour(behaviour) {}

    int32_t CaretOffset() override {
        if (FBehaviour.Is("places that throw")) throw std::runtime_error("the window is closed");
        return Spoilt(TPageView::CaretOffset());
    }
    TNibEditPos CaretPos() override {
        if (FBehaviour.Is("places far outside")) return {32767, std::numeric_limits<int32_t>::max()};
        if (FBehaviour.Is("places below 0")) return {-32768, std::numeric_limits<int32_t>::min()};
        return TPageView::CaretPos();
    }
    int32_t CharPosToOffset(TNibCharPos position) override {
        return Spoilt(TPageView::CharPosToOffset(position));
    }
    TRef<INibEditPosition> Position() override {
        return FBehaviour.Is("no position") ? nullptr : TPageView::Position();
    }
    TRef<INibEditBlock> Block() override { return FBehaviour.Is("no block") ? nullptr : TPageView::Block(); }
    TRef<INibEditBuffer> Buffer() override {
        return FBehaviour.Is("no buffer") ? nullptr : TPageView::Buffer();
    }
    void Repaint() override { FBehaviour.Enter("Repaint"); }
    void InvokeCompletion(int32_t) override { FBehaviour.Enter("InvokeCompletion"); }

private:
    int32_t Spoilt(int32_t offset) const {
        if (FBehaviour.Is("places far outside")) return std::numeric_limits<int32_t>::max();
        return FBehaviour.Is("places below 0") ? std::numeric_limits<int32_t>::min() : offset;
    }
    const TBehaviour& FBehaviour;
};

class TBadServices final : public minimal::TServices {
public:
    TBehaviour Behaviour;
    std::vector<std::string> Messages;

    TRef<INibEditView> CurrentEditView() override {
        Behaviour.Enter("CurrentEditView");
        return Behaviour.Is("no view") ? nullptr : TServices::CurrentEditView();
    }
    TRef<INibInsightList> CurrentList() override {
        Behaviour.Enter("CurrentList");
        return Behaviour.Is("no list") ? nullptr : TServices::CurrentList();
    }
    void InsertText(std::u16string_view text, bool replaceToken) override {
        Behaviour.Enter("InsertText");
        if (Behaviour.Is("a write that throws")) throw std::runtime_error("the buffer is locked");
        TServices::InsertText(text, replaceToken);
    }
    void AddMessage(std::string_view, std::string_view text, std::string_view, int32_t, int32_t) override {
        Messages.emplace_back(text);
        Behaviour.Enter("AddMessage");
    }
};

/// The small schemas of the tests in a folder of their own.
inline const std::string& SchemaFolder() {
    static const TTemporaryFolder folder;
    static const std::string path = [] {
        std::filesystem::copy_file(CARETWELL_SOURCE_DIR "/tests/data/schemas/loose.dtd",
                                   folder.Path("loose.dtd"));
        folder.Write("css.xml", R"(<css>
  <property name="color"><value name="inherit"/><value name="red"/></property>
  <property name="columns"/></css>)");
        return folder.Path();
    }();
    return path;
}

/// The engine in a host that can be told to misbehave.
struct TBadHost {
    explicit TBadHost(std::string schemas = SchemaFolder()) : Engine(schemas, Services) {}

    TRef<TBadView> Open(const char* fileName, std::string text) {
        size_t caret = text.find('^');
        text.erase(caret, 1);
        auto view = MakeRef<TBadView>(MakeRef<TBadPage>(fileName, std::move(text), Services->Behaviour),
                                      Services->Behaviour);
        view->SetCaretOffset(static_cast<int32_t>(caret));
        Services->SetView(view);
        return view;
    }

    TRef<TBadServices> Services = MakeRef<TBadServices>();
    TEngine Engine;
};

/// What a sane host is offered: the proof that the engine has come through unharmed.
inline std::string ProposeSanely(TEngine& engine, const char* fileName, std::string text) {
    size_t caret = text.find('^');
    text.erase(caret, 1);
    auto view = MakeRef<TPageView>(MakeRef<TPage>(fileName, text));
    view->SetCaretOffset(static_cast<int32_t>(caret));
    TEditor editor(engine, view);
    std::string names;
    if (editor.Complete())
        for (int32_t i = 0; i < editor.ItemCount(); ++i) names += ToUtf8(editor.ItemName(i)) + " ";
    return names;
}

inline void ExpectUnharmed(TBadHost& host, std::string_view after) {
    host.Services->Behaviour = {};
    EXPECT_EQ(ProposeSanely(host.Engine, "page.html", "<ul>^"), "</ul> li ") << after;
    EXPECT_EQ(ProposeSanely(host.Engine, "page.html", "<a target=\"^"), "_blank _parent _self _top ")
        << after;
    EXPECT_EQ(ProposeSanely(host.Engine, "a.css", "a { co^ }"), "color columns ") << after;
}

struct TDocumentCase {
    const char *FileName, *Text;
    char16_t Key;  // that opens the list, 0 for the user's command
};
/// A caret for each kind of list and each typing aid.
inline constexpr TDocumentCase Documents[] = {
    {"a.html", "<ul>^", 0},
    {"a.html", "<p><^", '<'},
    {"a.html", "<ul><l^", 0},
    {"a.html", "<a ti^", 0},
    {"a.html", "<a target=^", '='},
    {"a.html", "<a target=\"_b^\" title='x'>", 0},
    {"a.html", "<td bgcolor=^>", 0},
    {"a.html", "<div>^", '>'},
    {"a.html", "x &a^", '&'},
    {"a.xhtml.html",
     "<!DOCTYPE html PUBLIC '-//W3C//DTD XHTML 1.0 Strict//EN' 'loose.dtd'><br>^<img src='a'>", '>'},
    {"a.css", "a { co^ }", 0},
    {"a.css", "a { color:^ }", ':'},
    {"a.css", "a { color: r^", 0},
};

/// Every call that an editor makes for one list, in order, whatever is answered.
inline bool WorkThrough(INibCodeInsightManager& manager, TBadServices& services, char16_t openKey,
                        char16_t closeKey, const std::function<void()>& whileOpen = {}) {
    TNibCodeInsightType type = citNone;
    TNibInvokeType invokeType = itUser;
    manager.GetCodeInsightType(openKey, 0, type, invokeType);
    std::u16string token;
    bool isOpen = manager.InvokeCodeCompletion(invokeType, token);
    if (whileOpen) whileOpen();
    TRef<INibCodeInsightSymbolList> list;
    manager.GetSymbolList(list);
    list->SetFilter(token);
    int32_t count = list->GetCount(), index = -1;
    for (int32_t i = -2; i < std::min(count, 50) + 2; ++i) {
        list->GetSymbolText(i);
        list->GetSymbolTypeText(i);
        list->GetSymbolClassText(i);
        list->GetSymbolIsAbstract(i);
    }
    list->FindSymIndex(u"t", index);
    list->SetFilter(u"zzz");
    list->SetFilter(token);
    auto selection = MakeRef<TSelection>();
    bool isWild = services.Behaviour.Is("a selection out of the list");
    selection->Select(isWild ? 1'000'000 : 0, isWild ? u"no such thing" : list->GetSymbolText(0));
    services.SetList(selection, std::numeric_limits<int32_t>::max());
    bool closes = false, accepts = false, displayParams = false;
    manager.OnEditorKey(closeKey, closes, accepts);
    manager.Done(true, displayParams);
    services.SetList(nullptr, 0);
    return isOpen;
}

}  // namespace caretwell::test
