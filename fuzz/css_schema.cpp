// Any bytes as css.xml: reading ends with a table that can be listed, or with a message
// that has a line.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "markup/Text.h"
#include "stylesheet/CSSParser.h"
#include "stylesheet/CSSSchemaLoader.h"

using namespace caretwell;

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

void CheckProperty(TCSSSymbolTable& table, TCSSProperty& property) {
    Require(table.LookupProperty(property.FName) == &property);
    table.SetKibitzProperty(&property);
    Require(table.GetKibitzValueCount() == property.GetValueCount());
    for (int32_t i = 1; i < property.GetValueCount(); ++i) {
        const auto& values = property.GetValueList();
        auto at = static_cast<size_t>(i);
        Require(CompareText(std::string_view(values[at - 1]->FName), std::string_view(values[at]->FName)) <
                0);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    TStyleSheetParser parser;
    TCSSSymbolTable& table = parser.FSymbolTable;
    TCSSReader reader(table);
    try {
        reader.LoadFromText(std::string(reinterpret_cast<const char*>(data), size));
    } catch (const ECSSSchemaError& error) {
        Require(error.GetLine() >= 1 && *error.what());
        reader.Resolve();
    }
    Require(table.FEditors.Count() == 8);
    table.AlphaSort();
    for (int32_t i = 0; i < table.FProperties.Count(); ++i) CheckProperty(table, *table.GetProp(i));
    return 0;
}
