// Items of a value list that are not values but promises of one: "color...",
// "length...". When the user picks such an item, the editor of that name asks for the
// value in a dialog of the host.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "stylesheet/CSSImpl.h"
#include "stylesheet/CSSSymbols.h"

namespace caretwell {

class TCSSEditor : public TCSSSymbol {
public:
    virtual ~TCSSEditor() = default;
    TCSSEditor(const TCSSEditor&) = delete;
    TCSSEditor& operator=(const TCSSEditor&) = delete;

    /// True if FResult is to be inserted; false if the user cancelled or the host has
    /// no such dialog.
    virtual bool Execute() = 0;

    std::string FResult;  ///< text of the last Execute

protected:
    /// The name is that of the list item, with its three points.
    explicit TCSSEditor(std::string_view name) { FName = name; }
    /// The answer of a dialog becomes the result. False if there is none.
    bool Take(std::optional<std::string> answer);
};

/// The host's URL dialog. The result is the plain URL.
class TCSSURIEditor final : public TCSSEditor {
public:
    TCSSURIEditor() : TCSSEditor("uri...") {}
    bool Execute() override;
};

/// The host's colour dialog. The result is its text, unchanged.
class TCSSColorEditor final : public TCSSEditor {
public:
    TCSSColorEditor() : TCSSEditor("color...") {}
    bool Execute() override;
};

/// Fonts are offered as plain values, so there is nothing to ask for.
class TCSSFamilyNameEditor final : public TCSSEditor {
public:
    TCSSFamilyNameEditor() : TCSSEditor("family-name...") {}
    bool Execute() override { return false; }
};

/// A number and a unit, from the unit dialog.
class TCSSUnitEditor : public TCSSEditor {
public:
    TCSSUnitEditor() : TCSSEditor({}) {}
    /// Units in the order in which the dialog offers them.
    TCSSStringList& GetUnitList() { return FUnits; }
    /// A cancelled dialog leaves FResult as it was.
    bool Execute() override;

protected:
    using TCSSEditor::TCSSEditor;

private:
    TCSSStringList FUnits;
};

inline constexpr std::string_view _sEditorNameLength = "length...";
inline constexpr std::string_view _sEditorNameAngle = "angle...";
inline constexpr std::string_view _sEditorNameTime = "time...";
inline constexpr std::string_view _sEditorNameFrequency = "frequency...";
inline constexpr std::string_view _sEditorNamePercentage = "percentage...";

struct TCSSLengthEditor final : TCSSUnitEditor {
    TCSSLengthEditor() : TCSSUnitEditor(_sEditorNameLength) {}
};
struct TCSSAngleEditor final : TCSSUnitEditor {
    TCSSAngleEditor() : TCSSUnitEditor(_sEditorNameAngle) {}
};
struct TCSSTimeEditor final : TCSSUnitEditor {
    TCSSTimeEditor() : TCSSUnitEditor(_sEditorNameTime) {}
};
struct TCSSFrequencyEditor final : TCSSUnitEditor {
    TCSSFrequencyEditor() : TCSSUnitEditor(_sEditorNameFrequency) {}
};
struct TCSSPercentageEditor final : TCSSUnitEditor {
    TCSSPercentageEditor() : TCSSUnitEditor(_sEditorNamePercentage) {}
};

}  // namespace caretwell
