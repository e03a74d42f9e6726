#include "markup/DocumentKind.h"

namespace caretwell {
namespace {

constexpr TDocumentKind Kinds[] = {
    {.Extension = ".htm"},
    {.Extension = ".html"},
    {.Extension = ".aspx", .IsServerPage = true, .KeepsCase = true, .DirectiveSchema = "page_directives.xsd"},
    {.Extension = ".ascx",
     .IsServerPage = true,
     .KeepsCase = true,
     .Context = u"body",
     .DirectiveSchema = "control_directives.xsd"},
    {.Extension = ".master",
     .IsServerPage = true,
     .KeepsCase = true,
     .DirectiveSchema = "master_directives.xsd"},
    {.Extension = ".asax", .IsHandled = false, .DirectiveSchema = "asax_directives.xsd"},
    {.Extension = ".ashx", .IsHandled = false, .DirectiveSchema = "ashx_directives.xsd"},
    {.Extension = ".resx", .Mode = kmResX, .KeepsCase = true},
    {.Extension = ".xsl", .Mode = kmXSL, .KeepsCase = true},
    {.Extension = ".xslt", .Mode = kmXSL, .KeepsCase = true},
    {.Extension = ".wml", .Mode = kmWML, .KeepsCase = true},
};
constexpr TDocumentKind OtherPage = {.Extension = "", .IsHandled = false};

constexpr TFreeSchema FreeSchemas[] = {{".config", "DotNetConfig.xsd"}, {".sitemap", "SiteMapSchema.xsd"}};

}  // namespace

std::span<const TDocumentKind> GetDocumentKinds() { return Kinds; }

const TDocumentKind& GetDocumentKind(std::string_view extension) {
    for (const auto& row : Kinds)
        if (row.Extension == extension) return row;
    return OtherPage;
}

std::string_view GetDefaultSchema(TKibitzMode mode) {
    constexpr std::string_view files[] = {"loose.dtd", "xsl.dtd", "wml12.dtd", "resxschema.xsd", ""};
    return files[mode];
}

std::span<const TFreeSchema> GetFreeSchemas() { return FreeSchemas; }

}  // namespace caretwell
