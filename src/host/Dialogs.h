// The two dialogs of the host by which either language gets a value.
#pragma once

#include <optional>

#include "host/Nibapi.h"
#include "host/Paths.h"

namespace caretwell {

/// A URL as it is to be written; nothing if the dialog is missing or was cancelled.
inline std::optional<std::string> AskForURL() {
    auto services = GetService<INibDialogServices>();
    auto dialog = services ? services->CreateSelectURLDialog() : nullptr;
    if (!dialog) return std::nullopt;
    dialog->SetInitialFolder(FolderOf(dialog->GetModuleFileName()));
    return dialog->Execute() ? std::optional(dialog->GetPreviewURL()) : std::nullopt;
}

/// A colour as it is to be written; nothing if the dialog is missing or was cancelled.
inline std::optional<std::string> AskForColor() {
    auto services = GetService<INibDialogServices>();
    auto dialog = services ? services->CreateWebColorDlg() : nullptr;
    return dialog && dialog->Execute() ? std::optional(dialog->GetSelectedColor()) : std::nullopt;
}

}  // namespace caretwell
