#include "markup/MLParserUtils.h"

#include <algorithm>
#include <array>

namespace caretwell {
namespace {

constexpr std::array<std::string_view, 18> DTDTypes = {
    "CDATA",    "ENUMERATION", "ENTITY", "ENTITIES", "EMPTY", "ID",      "IDREF",   "IDREFS",   "NMTOKEN",
    "NMTOKENS", "NOTATION",    "NUMBER", "NAME",     "NAMES", "NUMBERS", "NUTOKEN", "NUTOKENS", "RCDATA"};

int32_t LastID = -1;

template <class C>
bool EqualsAscii(std::basic_string_view<C> text, std::string_view ascii) {
    return std::equal(text.begin(), text.end(), ascii.begin(), ascii.end(),
                      [](C a, char b) { return a == static_cast<C>(b); });
}

template <class C>
bool IsNoType(std::basic_string_view<C> ident) {
    return std::none_of(DTDTypes.begin(), DTDTypes.end(),
                        [&](std::string_view type) { return EqualsAscii(ident, type); });
}

}  // namespace

int32_t NewID() { return ++LastID; }

bool IdentIsNotDTDType(std::string_view ident) { return IsNoType(ident); }
bool IdentIsNotDTDType(std::u16string_view ident) { return IsNoType(ident); }

bool IdentIsAttributeEditor(std::string_view ident) {
    return SameText(ident, "uri...") || SameText(ident, "color...");
}
bool IdentIsAttributeEditor(std::u16string_view ident) {
    return SameText(ident, u"uri...") || SameText(ident, u"color...");
}

}  // namespace caretwell
