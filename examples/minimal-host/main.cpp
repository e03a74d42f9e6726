// The smallest honest host. Read Page.h, PageView.h, Services.h and Editor.h in this order;
// here they are put to use.
//
//     minimal-host SCHEMAS
#include <iostream>

#include "Editor.h"

namespace {

using namespace minimal;

/// A page whose caret is the "^" of the text.
TRef<TPageView> Open(const char* fileName, std::string text) {
    size_t caret = text.find('^');
    text.erase(caret, 1);
    auto view = MakeRef<TPageView>(MakeRef<TPage>(fileName, text));
    view->SetCaretOffset(static_cast<int32_t>(caret));
    return view;
}

void Print(TPageView& view) {
    std::string text = view.Page().Text();
    std::cout << text.insert(static_cast<size_t>(view.CaretOffset()), "^") << "\n\n";
}

void PrintList(const TEditor& editor) {
    std::cout << editor.ItemCount() << " items:";
    for (int32_t i = 0; i < editor.ItemCount(); ++i) std::cout << " " << ToUtf8(editor.ItemName(i));
    std::cout << "\n\n";
}

void WritePage(TEngine& engine) {
    auto view = Open("page.html", "<!DOCTYPE html>\n<ul>\n  ^\n</ul>\n");
    TEditor editor(engine, view);
    Print(*view);

    editor.Press(u'<');  // opens the list of what a ul may hold
    PrintList(editor);

    editor.Type(u"l");    // one letter narrows it, and selects
    editor.Press(Enter);  // the choice is written
    Print(*view);

    editor.Type(u"><a tar");  // ">" puts the closing tag in; a blank opens the attributes
    PrintList(editor);
    editor.Press(Enter);
    editor.Press(u'=');  // opens the values
    PrintList(editor);
    if (editor.Select(u"_blank")) editor.Press(Enter);
    Print(*view);

    editor.Undo();  // the whole choice is one step
    Print(*view);
}

// Who never looks at the lists gets what they type; closing tags are typed over.
void WriteByHand(TEngine& engine) {
    auto view = Open("page.html", "^");
    TEditor editor(engine, view);
    editor.Type(u"<ul><li>Tom & <b>Jerry</b></li></ul> <input disabled name=x>");
    Print(*view);
}

void WriteSheet(TEngine& engine) {
    auto view = Open("site.css", "a { co^ }");
    TEditor editor(engine, view);
    if (!editor.Complete()) return;
    if (editor.Select(u"color")) editor.Press(Enter);
    Print(*view);
}

}  // namespace

int main(int count, char** words) {
    if (count != 2) {
        std::cerr << "minimal-host SCHEMAS: the folder of the schemas is wanted\n";
        return 2;
    }
    TEngine engine(words[1]);
    WritePage(engine);
    WriteByHand(engine);
    WriteSheet(engine);
}
