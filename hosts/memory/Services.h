// The services of the embedded host, found by query on TarnwellIDEServices.
#pragma once

#include "host/Nibapi.h"
#include "memory/Dialogs.h"
#include "memory/EditView.h"
#include "memory/MessageView.h"

namespace caretwell {

class TMemoryServices final : public TImplements<INibServices, INibCodeInsightServices, INibMessageServices,
                                                 INibOptionServices, INibDialogServices> {
public:
    /// The folder under which the schema folder lies.
    void SetRootDirectory(std::string folder) { FRootDirectory = std::move(folder); }
    TMessageView& Messages() { return FMessages; }
    TDialogAnswers& Answers() { return FAnswers; }

    /// The view that has the focus; null for none.
    void SetCurrentView(TRef<TEditView> view) {
        FTokenStart.reset();
        FShown = nullptr;
        FView = std::move(view);
    }
    const TRef<TEditView>& CurrentView() const { return FView; }
    /// What CurrentEditView answers in the place of the current view; null for the view itself.
    void ShowInstead(TRef<INibEditView> view) { FShown = std::move(view); }
    /// The list that is open; null for none.
    void SetCurrentList(TRef<INibInsightList> list) { FList = std::move(list); }
    /// Where the token begins that the open list is filtered on, in bytes of the
    /// current view; nothing if no list is open.
    void SetTokenStart(std::optional<int32_t> offset);

    std::string BaseRegistryKey() override { return "Software\\Tarnwell"; }
    std::string RootDirectory() override { return FRootDirectory; }

    TRef<INibEditView> CurrentEditView() override;
    TRef<INibInsightList> CurrentList() override { return FList; }
    void InsertText(std::u16string_view text, bool replaceToken) override;

    void ClearMessages() override { FMessages.Clear(); }
    void ShowMessageView() override {}
    void AddMessage(std::string_view fileName, std::string_view text, std::string_view prefix, int32_t line,
                    int32_t column) override;

    std::string GetExtensionsForTypeID(std::string_view typeId) override;
    bool MatchExtensions(std::string_view fileName, std::string_view extensions) override;

    std::unique_ptr<TSelectURLDialog> CreateSelectURLDialog() override;
    std::unique_ptr<TWebColorDlg> CreateWebColorDlg() override { return MakeScriptedColorDialog(FAnswers); }

private:
    TRef<TEditView> OpenView() const { return FView && FView->IsOpen() ? FView : nullptr; }

    std::string FRootDirectory;
    TMessageView FMessages;
    TDialogAnswers FAnswers;
    TRef<TEditView> FView;
    TRef<INibEditView> FShown;
    TRef<INibInsightList> FList;
    std::unique_ptr<TTextMark> FTokenStart;
};

}  // namespace caretwell
