// Any bytes as a style sheet with the caret anywhere: the parse ends, the answer is one
// of the table's.
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "markup/MLBufferProducer.h"
#include "stylesheet/CSSParser.h"
#include "stylesheet/CSSSchemaLoader.h"

using namespace caretwell;

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

void CheckList(TCSSSymbolTable& table) {
    for (const char* filter : {"c", "co", "z", "", "x"}) {
        table.SetFilter(filter);
        int32_t values = table.GetKibitzValueCount(), properties = table.GetKibitzPropCount();
        for (int32_t i = 0; i < values; ++i) Require(!table.GetKibitzValue(i).empty());
        for (int32_t i = 0; i < properties; ++i) Require(!table.GetKibitzProp(i).empty());
        Require(table.FindIdent(filter) < std::max(values, properties));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static TStyleSheetParser* parser = [] {
        auto* made = new TStyleSheetParser();
        TCSSReader(made->FSymbolTable)
            .LoadFromText(
                "<css><property name='color'><value type='color'/></property><property name='z'/>"
                "<type name='color' editable='true'><value name='cz'/></type></css>");
        made->FSymbolTable.AlphaSort();
        return made;
    }();
    if (size < 2) return 0;
    // The first two bytes place the caret; the rest is repeated over a block's end if the
    // caret's highest bit asks for it.
    auto caret = static_cast<int32_t>(data[0] << 8 | data[1]);
    std::string text(reinterpret_cast<const char*>(data + 2), size - 2);
    if (caret & 0x8000 && !text.empty())
        while (text.size() < TMLBufferProducer::BlockSize + 100) text += text;
    caret = static_cast<int32_t>(static_cast<size_t>(caret & 0x7FFF) % (text.size() + 2));
    std::istringstream stream(text);
    parser->SetBufferAndPoint(MakeRef<TMLBufferProducer>(stream, "a.css", 0), caret);
    parser->Parse();
    Require(!KibitzPosName(parser->FKibitzPos).empty());
    CheckList(parser->FSymbolTable);
    return 0;
}
