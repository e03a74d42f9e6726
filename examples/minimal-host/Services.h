// Chapter 3. The services.
//
// The engine finds its host through one object, which it asks for services. Three are
// enough. All of them may be answered by one class: whoever lists an interface in
// TImplements answers a query for it.
#pragma once

#include <iostream>

#include "PageView.h"

namespace minimal {

class TServices : public TImplements<INibCodeInsightServices, INibMessageServices, INibOptionServices> {
public:
    // ---- INibCodeInsightServices: the view that has the focus, and the open list.
    void SetView(TRef<TPageView> view) { FView = std::move(view); }
    // "The token that the list was filtered on" is the text before the caret that the list
    // is narrowed by; the session of chapter 4 says where it begins.
    void SetList(TRef<INibInsightList> list, int32_t tokenStart) {
        FList = std::move(list);
        FTokenStart = tokenStart;
    }
    TRef<INibEditView> CurrentEditView() override { return FView; }
    TRef<INibInsightList> CurrentList() override { return FList; }
    void InsertText(std::u16string_view text, bool replaceToken) override {
        if (!FView) return;
        int32_t caret = FView->Page().Caret();
        FView->Page().Replace(replaceToken && FList ? std::min(FTokenStart, caret) : caret, caret,
                              ToUtf8(text));
    }

    // ---- INibMessageServices: what reading a schema had to say.
    void ClearMessages() override {}
    void ShowMessageView() override {}
    void AddMessage(std::string_view fileName, std::string_view text, std::string_view prefix, int32_t line,
                    int32_t) override {
        std::cerr << fileName << ":" << line << ": " << prefix << ": " << text << "\n";
    }

    // ---- INibOptionServices: the markup manager knows its extensions, the style sheet
    // manager asks for them.
    std::string GetExtensionsForTypeID(std::string_view typeId) override {
        return typeId == "Tarnwell.EditOptions.StyleSheet" ? ".css" : "";
    }
    bool MatchExtensions(std::string_view fileName, std::string_view extensions) override {
        return !extensions.empty() && fileName.ends_with(extensions);
    }

private:
    TRef<TPageView> FView;
    TRef<INibInsightList> FList;
    int32_t FTokenStart = 0;
};

/// The host's side of IDERegister: a list of managers. The index is whatever the host likes.
class TRegistry : public INibKibitzRegistry {
public:
    int32_t Register(TRef<INibCodeInsightManager> manager) override {
        FManagers.push_back(std::move(manager));
        return static_cast<int32_t>(FManagers.size()) - 1;
    }
    void Unregister(int32_t index) override { FManagers[static_cast<size_t>(index)] = nullptr; }

    /// Null if no manager takes the file.
    TRef<INibCodeInsightManager> Find(std::string_view fileName) const {
        for (const auto& manager : FManagers)
            if (manager && manager->GetEnabled() && manager->HandlesFile(fileName)) return manager;
        return nullptr;
    }

private:
    std::vector<TRef<INibCodeInsightManager>> FManagers;
};

}  // namespace minimal
