// Checks the lens on a real sheet: at every declaration the list behind "property:" and
// the list at the name's start.
//
//     lens_check css.xml sheet.css < declarations      (lines: nameOffset valueOffset name)
//
// The declarations come from a parser of today's style sheets, see scripts/check-lens.
#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <string_view>

#include "lens/Lens.h"
#include "markup/MLBufferProducer.h"
#include "stylesheet/CSSParser.h"
#include "stylesheet/CSSSchemaLoader.h"

using namespace caretwell;

namespace {

class TCheck {
public:
    TCheck(const std::string& schema, std::string sheet) : FSheet(std::move(sheet)) {
        TCSSReader reader(FParser.FSymbolTable);
        reader.LoadFromFile(schema);
        FParser.FSymbolTable.AlphaSort();
    }

    void CheckName(int32_t offset, const std::string& name) {
        ParseAt(offset);
        const bool offered = FParser.FKibitzPos == kpProperty && Table().GetKibitzPropCount() > 0;
        if (offered) ++FNames;
        else ++FLost["at the start of " + name];
    }

    // The list must be that of the property, or of the property without prefix and hack.
    // A name that the schema has in neither form must get some property's list.
    void CheckValue(int32_t offset, const std::string& name) {
        ParseAt(offset);
        ++FCount;
        const auto offered = FParser.FKibitzPos == kpExpr ? Offered() : std::set<std::string>();
        const auto bare = WithoutPrefix(name);
        const auto* own = Table().LookupProperty(name.substr(0, 2) == "--" ? "all" : name);
        const auto* plain = Table().LookupProperty(bare);
        const bool known = own || plain;
        const bool holds = !offered.empty() && (!known || offered == ListOf(own) || offered == ListOf(plain));
        if (!holds && IsPart(offered, ListOf(own))) ++FParts[name];
        else if (!holds && !known) ++FUnknown[name];
        else if (!holds) ++FLost["behind " + name + ":"];
        else if (known) ++FValues;
        else ++FStandIns[name];
    }

    void Print(const std::string& title) const {
        const auto share = [&](size_t held) {
            return std::to_string(held) + " (" +
                   std::to_string(100.0 * static_cast<double>(held) / static_cast<double>(FCount))
                       .substr(0, 6) +
                   "%)";
        };
        size_t standIns = 0;
        for (const auto& [name, count] : FStandIns) standIns += count;
        std::cout << title << ": " << FCount << " declarations; values " << share(FValues + standIns)
                  << ", names " << share(FNames) << '\n';
        PrintNames(FLost, "nothing ", "");
        PrintNames(FUnknown, "nothing behind ", ": no property has that name");
        PrintNames(FParts, "behind ", ": a part of its list");
        PrintNames(FStandIns, "behind ", ": another property's list");
    }

    /// Lists in part and unknown names do not count as held, and do not fail the check.
    bool Held() const { return FLost.empty(); }

private:
    using TNames = std::map<std::string, size_t>;

    static void PrintNames(const TNames& names, std::string_view before, std::string_view after) {
        for (const auto& [name, count] : names)
            std::cout << "    " << before << name << after << " (" << count << ")\n";
    }

    static bool IsPart(const std::set<std::string>& list, const std::set<std::string>& whole) {
        return !list.empty() && std::includes(whole.begin(), whole.end(), list.begin(), list.end());
    }

    TCSSSymbolTable& Table() { return FParser.FSymbolTable; }

    void ParseAt(int32_t offset) {
        std::istringstream stream(LookThrough(FSheet, lkStyleSheet, static_cast<size_t>(offset)).FText);
        FParser.SetBufferAndPoint(MakeRef<TMLBufferProducer>(stream, "sheet.css", 0), offset);
        FParser.Parse();
    }

    std::set<std::string> Offered() {
        std::set<std::string> list;
        for (int32_t i = 0; i < Table().GetKibitzValueCount(); ++i) list.insert(Table().GetKibitzValue(i));
        return list;
    }

    static std::set<std::string> ListOf(const TCSSProperty* property) {
        std::set<std::string> list;
        if (!property) return list;
        for (const auto* value : property->FValues)
            list.insert(value->FName + (value->FKind == cssVkType ? "..." : ""));
        return list;
    }

    static std::string WithoutPrefix(std::string_view name) {
        if (!name.empty() && (name[0] == '*' || name[0] == '_')) name.remove_prefix(1);
        if (!name.empty() && name[0] == '-')
            name.remove_prefix(std::min(name.find('-', 1), name.size() - 1) + 1);
        return std::string(name);
    }

    std::string FSheet;
    TStyleSheetParser FParser;
    size_t FCount = 0, FNames = 0, FValues = 0;
    TNames FLost, FUnknown, FParts, FStandIns;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: lens_check CSS.XML SHEET < DECLARATIONS\n";
        return 2;
    }
    std::ifstream file(argv[2], std::ios::binary);
    TCheck check(argv[1], std::string(std::istreambuf_iterator<char>(file), {}));
    int32_t nameOffset = 0, valueOffset = 0;
    std::string name;
    while (std::cin >> nameOffset >> valueOffset >> name) {
        check.CheckName(nameOffset, name);
        check.CheckValue(valueOffset, name);
    }
    check.Print(argv[2]);
    return check.Held() ? 0 : 1;
}
