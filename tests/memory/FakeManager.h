// A language for tests of the host, as small as it can be: one sorted list of words,
// keys that open it, keys that close it, and what Done writes.
#pragma once

#include <string>
#include <vector>

#include "markup/Text.h"
#include "memory/HostSession.h"

namespace caretwell {

class TFakeManager final : public TImplements<INibCodeInsightManager, INibCodeInsightSymbolList> {
public:
    std::vector<std::u16string> FWords = {u"body", u"break", u"div", u"dl", u"p"};
    std::u16string FKept;  // at the head of the list whatever the filter
    std::string FExtension = ".fake";
    std::u16string FTriggers = u"<:";  // open the list
    std::u16string FAccepting = u"\t\r ;>";
    std::u16string FRecorded = u">\"";  // close the list and are written by Done
    std::u16string FCloser;             // goes behind a choice
    bool FIsShown = true;               // answer of InvokeCodeCompletion
    bool FIsValueList = false;          // items stand in the column of types
    bool FIsChained = false;            // a blank opens the next list
    std::string FOptionSet = "Tarnwell.EditOptions.Fake";
    int FDoneCount = 0;
    std::u16string FBeforeInvoke;  // written by each invocation, as a typing aid
    bool FRequestsWithin = false;  // asks for a list from inside the invocation

    std::string GetName() override { return "Fake"; }
    std::string GetIDString() override { return "Fake"; }
    bool GetEnabled() override { return true; }
    void SetEnabled(bool) override {}
    TCharSet EditorTokenValidChars(bool) override {
        return TCharSet("-").WithRange('a', 'z').WithRange('0', '9').WithRange(192, 254);
    }
    void AllowCodeInsight(bool&, char16_t) override {}
    bool PreValidateCodeInsight(std::u16string_view) override { return true; }
    bool IsViewerBrowsable(int32_t) override { return false; }
    bool GetMultiSelect() override { return false; }
    void GetSymbolList(TRef<INibCodeInsightSymbolList>& list) override { list = this; }
    void OnEditorKey(char16_t key, bool& closeViewer, bool& accept) override {
        accept = FAccepting.find(key) != FAccepting.npos;
        bool isRecorded = FRecorded.find(key) != FRecorded.npos || (FIsChained && key == ' ');
        if (isRecorded) FKey = key;
        closeViewer = accept || isRecorded || key == 27;
    }
    bool HandlesFile(std::string_view name) override { return name.ends_with(FExtension); }
    std::u16string GetLongestItem() override { return u""; }
    void GetParameterList(TRef<INibCodeInsightParameterList>& list) override { list = nullptr; }
    void GetCodeInsightType(char16_t c, int32_t element, TNibCodeInsightType& type,
                            TNibInvokeType& invokeType) override {
        bool isTrigger = FTriggers.find(c) != FTriggers.npos;
        type = element == 0 && (c == 0 || isTrigger) ? citList : citNone;
        invokeType = c == 0 ? itUser : itTrigger;
    }
    bool InvokeCodeCompletion(TNibInvokeType, std::u16string& text) override {
        FKey = 0;
        auto services = GetService<INibCodeInsightServices>();
        auto view = services->CurrentEditView();
        if (!FBeforeInvoke.empty()) services->InsertText(std::exchange(FBeforeInvoke, u""), false);
        if (std::exchange(FRequestsWithin, false)) Request(*view);
        text = view->Position()->TakeText(EditorTokenValidChars(false), INibEditPosition::TakeBackwards);
        return FIsShown;
    }
    bool InvokeParameterCodeInsight(TNibInvokeType, int32_t&) override { return false; }
    void ParameterCodeInsightAnchorPos(TNibEditPos&) override {}
    int32_t ParameterCodeInsightParamIndex(TNibEditPos) override { return -1; }
    std::u16string GetHintText(int32_t, int32_t) override { return u""; }
    bool GotoDefinition(std::string&, int32_t&, int32_t) override { return false; }
    std::string GetOptionSetName() override { return FOptionSet; }
    void Done(bool accepted, bool& displayParams) override {
        displayParams = false;
        ++FDoneCount;
        auto services = GetService<INibCodeInsightServices>();
        auto list = services->CurrentList();
        auto view = services->CurrentEditView();
        // What ends a tag takes the selection with it, accepted or not.
        if ((accepted || FKey == '>') && list && list->SelectedIndex() >= 0)
            services->InsertText(list->SelectedText() + FCloser, true);
        if (FRecorded.find(FKey) != FRecorded.npos && FKey)
            services->InsertText(std::u16string(1, FKey), false);
        if (FIsChained && FKey == ' ') {
            view->Position()->InsertChar(FKey);
            Request(*view);
        }
    }

    void Clear() override { FFilter.clear(); }
    int32_t GetCount() override { return static_cast<int32_t>(Visible().size()); }
    bool GetSymbolIsReadWrite(int32_t) override { return false; }
    bool GetSymbolIsAbstract(int32_t index) override { return GetSymbolText(index).starts_with(u"</"); }
    int32_t GetViewerSymbolFlags(int32_t) override { return 0; }
    int32_t GetViewerVisibilityFlags(int32_t) override { return 0; }
    int32_t GetProcDispatchFlags(int32_t) override { return 0; }
    void SetSortOrder(TNibSortOrder) override {}
    TNibSortOrder GetSortOrder() override { return soByName; }
    int32_t FindIdent(std::u16string_view) override { return -1; }
    bool FindSymIndex(std::u16string_view ident, int32_t& index) override {
        auto visible = Visible();
        for (size_t i = 0; i < visible.size(); ++i)
            if (visible[i] == ident) return index = static_cast<int32_t>(i), true;
        return false;
    }
    void SetFilter(std::u16string_view text) override { FFilter = text; }
    std::u16string GetSymbolText(int32_t index) override { return FIsValueList ? u"" : Word(index); }
    std::u16string GetSymbolTypeText(int32_t index) override {
        return FIsValueList ? u" " + Word(index) : u"";
    }
    std::u16string GetSymbolClassText(int32_t) override { return u"Word"; }

private:
    static void Request(INibEditView& view) {
        if (auto actions = QueryAs<INibEditActions>(&view))
            actions->InvokeCompletion(INibEditActions::CompleteAsUser);
    }
    std::vector<std::u16string> Visible() const {
        std::vector<std::u16string> result;
        if (!FKept.empty()) result.push_back(FKept);
        for (const auto& word : FWords)
            if (StartsWithText(std::u16string_view(word), FFilter)) result.push_back(word);
        return result;
    }
    std::u16string Word(int32_t index) const {
        auto visible = Visible();
        return index >= 0 && static_cast<size_t>(index) < visible.size() ? visible[static_cast<size_t>(index)]
                                                                         : u"";
    }

    std::u16string FFilter;
    char16_t FKey = 0;
};

}  // namespace caretwell
