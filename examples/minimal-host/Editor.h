// Chapter 4. The keys.
//
// What a key means is the session's to say: it opens the list, lets letters narrow it, knows
// which key takes an item, and asks for the next list. The editor tells it every key twice:
// before the key is in the text, and after that, unless the session has done it all.
//
//     key -> KeyDown -> done
//                    -> text -> KeyTyped
#pragma once

#include <caretwell/host/Platform.h>
#include <caretwell/package/HTMReg.h>
#include <caretwell/typing/TypingSession.h>

#include "Services.h"

namespace minimal {

constexpr char16_t Enter = 13;

/// Starts the engine and ends it. There is one in a process at a time.
class TEngine {
public:
    explicit TEngine(const std::string& schemaFolder, TRef<TServices> services = MakeRef<TServices>())
        : Services(std::move(services)), FPlatform(MakePlatform({.SchemaFolder = schemaFolder})) {
        SetPlatform(FPlatform.get());
        // Any of its interfaces stands for the object; the first is as good as another.
        SetTarnwellIDEServices(Services);
        SetGlobalKibitzManager(&Registry);
        Initialize();
        IDERegister();
    }
    ~TEngine() {
        Finalize();  // takes the managers out of the registry
        SetGlobalKibitzManager(nullptr);
        SetTarnwellIDEServices(nullptr);
        SetPlatform(nullptr);
    }
    TEngine(const TEngine&) = delete;
    TEngine& operator=(const TEngine&) = delete;

    TRef<TServices> Services;
    TRegistry Registry;

private:
    std::unique_ptr<IPlatform> FPlatform;
};

class TEditor : private ITypingHost {
public:
    TEditor(TEngine& engine, TRef<TPageView> view) : FEngine(engine), FView(std::move(view)) {
        FEngine.Services->SetView(FView);
        FView->OnRequest = [this] { FSession.RequestList(); };
    }
    ~TEditor() override {
        FSession.Dismiss();
        FView->OnRequest = nullptr;
        FEngine.Services->SetView(nullptr);
    }
    TEditor(const TEditor&) = delete;
    TEditor& operator=(const TEditor&) = delete;

    /// The user asks for the list. False if there is nothing to offer.
    bool Complete() {
        return Step([this] { FSession.OpenList(); }), IsOpen();
    }
    void Type(std::u16string_view keys) {
        for (char16_t key : keys) Press(key);
    }
    void Press(char16_t key) {
        Step([this, key] {
            if (FSession.KeyDown(key)) return;
            FView->Position()->InsertChar(key == Enter ? u'\n' : key);
            FSession.KeyTyped(key);
        });
    }
    void Backspace() {
        Step([this] {
            FView->Position()->DeleteBack(1);
            FSession.TextDeleted();
        });
    }
    void Undo() {
        FView->Page().Undo();
        FSession.CaretMoved();
    }

    bool IsOpen() const { return FSession.IsOpen(); }
    int32_t ItemCount() const { return FSession.ItemCount(); }
    std::u16string ItemName(int32_t index) const { return FSession.Item(index).Name; }
    /// As by a click. False, and nothing changed, if the list has no such item.
    bool Select(std::u16string_view name) {
        for (int32_t i = 0; i < ItemCount(); ++i)
            if (ItemName(i) == name) return FSession.Select(i), true;
        return false;
    }

private:
    // One key is one step of undo.
    template <class TAction>
    void Step(TAction action) {
        FView->Page().BeginStep();
        action();
        FView->Page().EndStep();
    }

    // ---- ITypingHost
    TRef<INibEditView> View() override { return FView; }
    TRef<INibCodeInsightManager> FindManager() override {
        return FEngine.Registry.Find(FView->Page().FileName());
    }
    // An editor with a screen draws its list here.
    void ShowList(TRef<INibInsightList> list, int32_t tokenStart) override {
        FEngine.Services->SetList(std::move(list), tokenStart);
    }

    TEngine& FEngine;
    TRef<TPageView> FView;
    TTypingSession FSession{*this};
};

}  // namespace minimal
