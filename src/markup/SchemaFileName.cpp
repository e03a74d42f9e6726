// Finds the local schema file for what a document or a schema names.
#include <string>

#include "host/Paths.h"
#include "host/Platform.h"
#include "markup/DocumentKind.h"
#include "markup/MLParserUtils.h"

namespace caretwell {
namespace {

struct TPublicIdentifier {
    std::string_view Name;
    std::string_view File;
};
constexpr TPublicIdentifier PublicIdentifiers[] = {
    {"-//W3C//DTD XHTML 1.0 Frameset//EN", "xhtml1-frameset.dtd"},
    {"-//W3C//DTD XHTML 1.0 Strict//EN", "xhtml1-strict.dtd"},
    {"-//W3C//DTD XHTML 1.0 Transitional//EN", "xhtml1-transitional.dtd"},
    {"-//W3C//DTD HTML 3.2 Final//EN", "HTML3.2.dtd"},
    {"-//IETF//DTD HTML//EN", "HTML2.dtd"},
    {"-//IETF//DTD HTML 2.0 Strict//EN", "HTML2-strict.dtd"},
    {"-//W3C//DTD HTML 4.01//EN", "strict.dtd"},
    {"-//W3C//DTD HTML 4.01 Transitional//EN", "loose.dtd"},
    {"-//W3C//DTD HTML 4.01 Frameset//EN", "frameset.dtd"},
    {"-//W3C//ENTITIES Latin1//EN//HTML", "HTMLlat1.ent"},
    {"-//W3C//ENTITIES Symbols//EN//HTML", "HTMLsymbol.ent"},
    {"-//W3C//ENTITIES Special//EN//HTML", "HTMLspecial.ent"},
};
// The one public identifier in use that does not begin with a hyphen.
constexpr TPublicIdentifier AddedLatin1 = {"ISO 8879-1986//ENTITIES Added Latin 1//EN//HTML", "HTMLlat1.ent"};

}  // namespace

std::string GetSchemaFileName(std::string_view name, TKibitzMode mode) {
    auto inFolder = [](std::string_view file) { return GetPlatform().SchemaFolder() + std::string(file); };
    std::string_view byMode = GetDefaultSchema(mode);
    if (name.empty()) name = byMode;
    if (name.starts_with('-')) {
        for (const auto& row : PublicIdentifiers)
            if (row.Name == name) return inFolder(row.File);
        return mode == kmXML ? std::string(name) : inFolder(byMode);
    }
    if (name == AddedLatin1.Name) return inFolder(AddedLatin1.File);
    return inFolder(FileNameOf(name));
}

}  // namespace caretwell
