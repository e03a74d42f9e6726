#include <caretwell/host/Platform.h>
#include <caretwell/insight/MLCodeInsight.h>
#include <caretwell/package/HTMReg.h>

#include <cstdio>
#include <sstream>

int main() {
    auto platform = caretwell::MakePlatform({.SchemaFolder = SCHEMAS});
    caretwell::SetPlatform(platform.get());
    caretwell::Initialize();
    std::istringstream page("<ul>");
    auto manager = caretwell::MarkupLanguageManager();
    manager->Parse({5, 1}, caretwell::MakeRef<caretwell::TMLBufferProducer>(page, "page.html", 0), nullptr);
    caretwell::TRef<caretwell::INibMLTag> list;
    manager->GetTagFromHashList(u"ul", list);
    for (int i = 0; list && i < list->GetTagCount(); ++i)
        std::puts(caretwell::ToUtf8(list->GetTags(i)->GetName()).c_str());
    manager = nullptr;
    caretwell::Finalize();
}
