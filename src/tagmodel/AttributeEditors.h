// Where an attribute's value comes from: its own list, or a dialog. The registry
// turns a word of a schema ("color", "uri", "default") into an editor, and hosts may
// register words of their own.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "caretwell/markup/MLParserUtils.h"

namespace caretwell {

/// Makes an editor; null if the class turns out to be none.
using TMLEditorClass = std::function<TRef<IRefCounted>()>;

/// Words of a schema, and the editors that they ask for.
struct INibMLEditorRegistry : IRefCounted {
    static constexpr TGuid Id = Guid("df289f91-482f-4369-87a0-1bb2f643beab");
    using Parent = IRefCounted;
    /// Always true. A word that is taken keeps its first class.
    virtual bool RegisterEditorClass(std::string_view editorId, TMLEditorClass editorClass) = 0;
    /// Never null: a word that nobody registered gets the default behaviour.
    virtual TRef<INibMLEditor> GetEditor(std::string_view editorId) = 0;
};

/// What the three editors share: a value, and nothing to do after its insertion.
class TAttributeEditorBase : public TImplements<INibMLEditor> {
public:
    int32_t RelativeMoveCaretPos() override { return 0; }
    bool InvokeCodeCompletion() override { return false; }
    std::u16string GetValue() override { return FValue; }

protected:
    /// The answer of a dialog becomes the value. False if there is none.
    bool Take(const std::optional<std::string>& answer);

    std::u16string FValue;  // of the last Execute, whichever attribute it ran for
};

/// Asks the host's URL dialog.
class THTMLURIAttributeEditor final : public TAttributeEditorBase {
public:
    static constexpr std::string_view EDITOR_ID = "uri";
    bool Execute(IRefCounted* context, int32_t value) override;
    std::string GetEditorId() override { return std::string(EDITOR_ID); }
};
/// Asks the host's colour dialog.
class THTMLColorAttributeEditor final : public TAttributeEditorBase {
public:
    bool Execute(IRefCounted* context, int32_t value) override;
    std::string GetEditorId() override { return "color"; }
};
/// Takes the value at an index of the attribute's range; context is the attribute.
class TDefaultAttributeEditor final : public TAttributeEditorBase {
public:
    static constexpr std::string_view EDITOR_ID = "default";
    bool Execute(IRefCounted* context, int32_t value) override;
    std::string GetEditorId() override { return std::string(EDITOR_ID); }
};

class TMLEditorResgistry final : public TImplements<INibMLEditorRegistry> {
public:
    bool RegisterEditorClass(std::string_view editorId, TMLEditorClass editorClass) override;
    TRef<INibMLEditor> GetEditor(std::string_view editorId) override;

private:
    std::vector<TRef<INibMLEditor>> FInstances;
    std::unordered_map<std::string, TMLEditorClass> FClasses;
};

/// The one registry of the process, made on first use.
CARETWELL_API TRef<INibMLEditorRegistry> GetMLEditorRegistry();
/// Called at shut-down.
void ReleaseMLEditorRegistry();

}  // namespace caretwell
