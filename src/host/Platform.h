// What the engine needs of the machine: settings, fonts, the Ctrl key, the main
// thread, the folder of the executable, folder listings and modal forms.
//
// GetPlatform() is the Linux one (host/linux) unless a host or a test set its own.
// Nothing else in the library calls the operating system, except that the schema
// readers open the schema file whose path they are given.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "caretwell/host/Export.h"

namespace caretwell {

/// Settings of the host: string values under keys such as "Software\Tarnwell\Code Insight".
class ISettingsStore {
public:
    virtual ~ISettingsStore() = default;
    /// False if the key cannot be opened or, when it is missing, made.
    virtual bool OpenKey(std::string_view key) = 0;
    /// The value under an opened key; nothing if it is missing.
    virtual std::optional<std::string> ReadString(std::string_view key, std::string_view name) = 0;
};

/// One control of a modal form, in pixels at 96 dots per inch.
struct TFormControl {
    enum TKind { fcBevel, fcLabel, fcButton, fcSpinner, fcEdit, fcDropDown };
    std::string Name;
    TKind Kind = fcLabel;
    int32_t Left = 0, Top = 0, Width = 0, Height = 0;
    std::string Text;                ///< caption, or the content of an edit field
    std::vector<std::string> Items;  ///< of a drop-down list
    int32_t ItemIndex = -1;          ///< selected item, -1 if none
    int32_t ItemHeight = 0;
    int32_t ModalResult = 0;  ///< of a button; 0 leaves the form open
    bool IsDefault = false;
    bool IsCancel = false;
    int32_t TabOrder = -1;  ///< -1: not reached by the tab key
    std::string Associate;  ///< of a spinner: the edit field that it drives
};

/// A modal dialog as data. Shown by whatever form facility the host has.
struct TForm {
    std::string Name;     ///< class of the form
    std::string Purpose;  ///< what is asked for, such as "length"; scripted hosts answer by it
    std::string Caption;
    int32_t ClientWidth = 0, ClientHeight = 0;
    bool IsDialogBorder = true;
    bool IsScreenCentered = true;
    uint32_t Color = 0;  ///< system colour index of the background
    std::string ActiveControl;
    std::vector<TFormControl> Controls;

    TFormControl* Find(std::string_view name) {
        for (auto& control : Controls)
            if (control.Name == name) return &control;
        return nullptr;
    }
};

/// Shows the one form of the engine, by which a length is entered.
class IFormHost {
public:
    virtual ~IFormHost() = default;
    /// Shows the form, lets the user change texts and selections in it, and returns the
    /// modal result of the button that closed it (2 for one that was just closed).
    virtual int32_t ShowModal(TForm& form) = 0;
};

/// The machine, as far as the engine needs it.
class IPlatform {
public:
    virtual ~IPlatform() = default;
    /// True on the thread that the host drives the engine on. Asked at every call, also
    /// from other threads. The machine's own answers by the first thread of the process.
    virtual bool IsMainThread() = 0;
    virtual bool
    IsCtrlDown() = 0;  ///< at this moment; closing tags of the list then lead to their opening tags
    /// Absolute path of the host's executable, empty if it has none. The engine itself does not ask:
    /// the machine's platform finds its schema folder by it.
    virtual std::string ExecutablePath() = 0;
    /// The schema folder with its trailing separator.
    virtual std::string SchemaFolder() = 0;
    virtual bool FileExists(const std::string& path) = 0;
    /// Names of the files of a folder, sorted; empty if it cannot be read.
    virtual std::vector<std::string> ListFolder(const std::string& folder) = 0;
    /// Families of the fonts installed, sorted; empty on a machine without fonts.
    virtual std::vector<std::string> FontFamilies() = 0;
    virtual ISettingsStore* Settings() = 0;  ///< null if there is none
    virtual IFormHost* Forms() = 0;          ///< null in a host without forms
};

/// The platform that was set, otherwise the machine's own.
CARETWELL_API IPlatform& GetPlatform();
/// Sets the platform; null goes back to the machine's own. Not owned.
CARETWELL_API void SetPlatform(IPlatform* platform);

/// The machine's own platform, with what a host adds to it.
struct TPlatformOptions {
    std::string SchemaFolder;            ///< empty: beside the folder of the executable
    ISettingsStore* Settings = nullptr;  ///< not owned
    IFormHost* Forms = nullptr;          ///< not owned
};
/// A platform for SetPlatform, which the caller owns.
CARETWELL_API std::unique_ptr<IPlatform> MakePlatform(TPlatformOptions options);

}  // namespace caretwell
