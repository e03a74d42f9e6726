// Chapter 4. The keys.
//
// With no list open, a key goes into the text and the manager is asked whether it opens
// one. With a list open, the manager judges the key first: letters go on filtering, other
// keys close the list, with a choice or without. Done ends every list.
//
//     key -> text -> GetCodeInsightType -> InvokeCodeCompletion -> the list is shown
//     key -> OnEditorKey -> text and SetFilter, or Done
#pragma once

#include <caretwell/host/Platform.h>
#include <caretwell/insight/MLCodeInsight.h>
#include <caretwell/package/HTMReg.h>

#include "Services.h"

namespace minimal {

constexpr char16_t Tab = 9, Enter = 13, Escape = 27;

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

class TEditor {
public:
    TEditor(TEngine& engine, TRef<TPageView> view) : FEngine(engine), FView(std::move(view)) {
        FEngine.Services->SetView(FView);
        FView->OnRequest = [this] { FIsRequested = true; };
        FManager = FEngine.Registry.Find(FView->Page().FileName());
    }
    ~TEditor() {
        CloseList(false);
        FView->OnRequest = nullptr;
        FEngine.Services->SetView(nullptr);
    }
    TEditor(const TEditor&) = delete;
    TEditor& operator=(const TEditor&) = delete;

    /// The user asks for the list. False if there is nothing to offer.
    bool Complete() {
        Step([this] { OpenList(0); });
        return IsOpen();
    }
    void Type(std::u16string_view keys) {
        for (char16_t key : keys) Press(key);
    }
    void Press(char16_t key) {
        Step([this, key] {
            if (IsOpen()) PressInList(key);
            else PressInText(key);
        });
    }

    bool IsOpen() const { return static_cast<bool>(FList); }
    int32_t ItemCount() const { return FList ? FList->GetCount() : 0; }
    /// What the user reads. A value has no text of its own: it stands in the column of
    /// types, behind a blank.
    std::u16string ItemName(int32_t index) const {
        std::u16string name = FList->GetSymbolText(index);
        if (name.empty()) name = FList->GetSymbolTypeText(index);
        return name.starts_with(u' ') ? name.substr(1) : name;
    }
    /// False, and nothing changed, if the list has no such item.
    bool Select(std::u16string_view name) {
        for (int32_t i = 0; i < ItemCount(); ++i)
            if (ItemName(i) == name) {
                FSelection->Select(i, ItemName(i));
                return true;
            }
        return false;
    }

private:
    // One key is one step of undo. A list that the engine asked for while it was at work
    // is opened when it is done.
    template <class TAction>
    void Step(TAction action) {
        if (!FManager) return;
        FView->Page().BeginStep();
        action();
        if (std::exchange(FIsRequested, false)) {
            CloseList(false);
            OpenList(0);
        }
        FIsRequested = false;
        FView->Page().EndStep();
    }

    void PressInText(char16_t key) {
        FView->Position()->InsertChar(key == Enter ? u'\n' : key);
        OpenList(key);
    }

    void OpenList(char16_t key) {
        if (key == u'&') ParseAhead();
        TNibCodeInsightType type = citNone;
        TNibInvokeType invokeType = itNone;
        FManager->GetCodeInsightType(key, 0, type, invokeType);
        std::u16string token;
        if (type != citList || !FManager->InvokeCodeCompletion(invokeType, token)) return;
        FManager->GetSymbolList(FList);
        FSelection = MakeRef<TSelection>();
        FEngine.Services->SetList(FSelection);
        Filter();
        if (ItemCount() == 0) CloseList(false);
    }

    // An editor that parses while the user rests has a fresh parse when "&" is typed, and
    // the engine answers from that. This one has not.
    void ParseAhead() {
        if (auto markup = QueryAs<INibMLCodeInsightManager>(FManager))
            markup->Parse(FView->CaretPos(), MakeRef<TMLBufferProducer>(TRef<INibEditView>(FView), 0),
                          nullptr);
    }

    void Filter() {
        auto token = FView->Position()->TakeText(FManager->EditorTokenValidChars(false),
                                                 INibEditPosition::TakeBackwards);
        FEngine.Services->SetToken(static_cast<int32_t>(ToUtf8(token).size()));
        FList->SetFilter(token);
        int32_t index = -1;
        bool found = FList->FindSymIndex(token, index) && !token.empty();
        FSelection->Select(found ? index : -1, found ? ItemName(index) : std::u16string());
    }

    void PressInList(char16_t key) {
        bool close = false, accept = false;
        FManager->OnEditorKey(key, close, accept);
        if (!close) {
            FView->Position()->InsertChar(key);
            return Filter();
        }
        // With nothing selected no choice is made, and the key is a key like any other,
        // unless the engine has written it.
        bool chosen = accept && FSelection->SelectedIndex() >= 0;
        std::string before = FView->Page().Text();
        CloseList(chosen);
        if (!chosen && key != Escape && FView->Page().Text() == before) PressInText(key);
    }

    void CloseList(bool accepted) {
        if (!IsOpen()) return;
        bool displayParams = false;
        FManager->Done(accepted, displayParams);
        FEngine.Services->SetList(nullptr);
        FList = nullptr;
        FSelection = nullptr;
    }

    TEngine& FEngine;
    TRef<TPageView> FView;
    TRef<INibCodeInsightManager> FManager;
    TRef<INibCodeInsightSymbolList> FList;  // while it is open
    TRef<TSelection> FSelection;
    bool FIsRequested = false;
};

}  // namespace minimal
