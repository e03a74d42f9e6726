#include "memory/Services.h"

#include "host/Paths.h"
#include "markup/Text.h"

namespace caretwell {

void TMemoryServices::SetTokenStart(std::optional<int32_t> offset) {
    FTokenStart.reset();
    // In front of what is inserted there: that is where the token grows.
    if (offset && FView)
        FTokenStart = std::make_unique<TTextMark>(FView->Text(), *offset, TTextMark::msBefore);
}

TRef<INibEditView> TMemoryServices::CurrentEditView() {
    auto view = OpenView();
    return view && FShown ? FShown : TRef<INibEditView>(view);
}

void TMemoryServices::InsertText(std::u16string_view text, bool replaceToken) {
    auto view = OpenView();
    if (!view) return;
    int32_t caret = view->CaretOffset();
    int32_t start = replaceToken && FTokenStart ? std::min(FTokenStart->Offset(), caret) : caret;
    view->Text().Replace(start, caret - start, ToUtf8(text));
}

void TMemoryServices::AddMessage(std::string_view fileName, std::string_view text, std::string_view prefix,
                                 int32_t line, int32_t column) {
    FMessages.Add({std::string(fileName), std::string(text), std::string(prefix), line, column});
}

std::string TMemoryServices::GetExtensionsForTypeID(std::string_view typeId) {
    if (typeId == "Tarnwell.EditOptions.StyleSheet") return "css";
    if (typeId == "Tarnwell.EditOptions.HTML") return "htm;html;aspx;ascx;master;resx;xsl;xslt;wml";
    return {};
}

bool TMemoryServices::MatchExtensions(std::string_view fileName, std::string_view extensions) {
    std::string extension = ExtensionOf(fileName);
    if (extension.empty()) return false;
    extension.erase(0, 1);  // the point
    while (!extensions.empty()) {
        size_t end = std::min(extensions.find(';'), extensions.size());
        if (SameText(extensions.substr(0, end), extension)) return true;
        extensions.remove_prefix(std::min(end + 1, extensions.size()));
    }
    return false;
}

std::unique_ptr<TSelectURLDialog> TMemoryServices::CreateSelectURLDialog() {
    auto view = OpenView();
    return MakeScriptedURLDialog(FAnswers, view ? view->Buffer()->FileName() : std::string());
}

}  // namespace caretwell
