// What the tests of the style sheet side share: a small schema, and sheets with '^' at
// the caret, which is taken out before they are read.
#pragma once

#include <sstream>
#include <string>
#include <string_view>

#include "markup/MLBufferProducer.h"
#include "stylesheet/CSSParser.h"
#include "stylesheet/CSSSchemaLoader.h"

namespace caretwell {

constexpr const char* SmallSchema = R"(<css>
  <property name="color" inherited="true"><media name="visual"/>
    <value type="color"/><value name="inherit"/></property>
  <property name="width" inherited="false"><value type="length"/><value name="auto"/></property>
  <property name="margin"><value sequence=""><value name="auto"/></value></property>
  <property name="columns"/>
  <type name="color" editable="true"><value name="red"/><value name="rebeccapurple"/></type>
  <type name="length" editable="true"><value type="px"/><value type="em"/></type>
</css>)";

struct TSheet {
    /// Without a '^' the caret stands behind all that can be read.
    explicit TSheet(std::string_view marked) : FText(marked) {
        size_t mark = FText.find('^');
        if (mark != FText.npos) FText.erase(mark, 1);
        FCaret = mark == FText.npos ? INT32_MAX : static_cast<int32_t>(mark);
    }
    TRef<IMLBufferProducer> Read() {
        FStream.str(FText);
        return MakeRef<TMLBufferProducer>(FStream, "a.css", 0);
    }

    std::string FText;
    int32_t FCaret;
    std::istringstream FStream;
};

/// A parser that knows SmallSchema.
class TSheetParser : public TStyleSheetParser {
public:
    TSheetParser() {
        TCSSReader(FSymbolTable).LoadFromText(SmallSchema);
        FSymbolTable.AlphaSort();
    }
    void ParseSheet(std::string_view marked) {
        TSheet sheet(marked);
        SetBufferAndPoint(sheet.Read(), sheet.FCaret);
        Parse();
    }
    /// "kpExpr color"; the current property is left out if there is none.
    std::string Answer(std::string_view marked) {
        ParseSheet(marked);
        std::string answer(KibitzPosName(FKibitzPos));
        if (auto* property = FSymbolTable.GetKibitzProperty()) answer += " " + property->FName;
        return answer;
    }
};

}  // namespace caretwell
