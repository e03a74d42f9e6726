// The content of a complex type as the schema writes it: order, choices and counts.
//
//     <xs:sequence><xs:element ref="b"/><xs:any minOccurs="0"/></xs:sequence>
//         sequence { element b, wildcard 0..1 }
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "schema/XMLSchema.h"

namespace caretwell {

enum class TXMLParticleKind : uint8_t { Element, Wildcard, Sequence, Choice, All };

/// The namespaces that a wildcard lets in.
struct TXMLWildcard {
    std::vector<std::string_view> Namespaces;  ///< empty: those of the list; "" is no namespace
    bool IsAny = false;                        ///< every namespace
    bool IsOther = false;                      ///< every namespace but those of the list
};

/// A particle and what it holds. Trees stand in one vector, each node before its parts.
struct TXMLParticle {
    static constexpr uint32_t Unbounded = 0xFFFF'FFFF;

    TXMLParticleKind Kind = TXMLParticleKind::Sequence;
    uint32_t Least = 1, Most = 1;
    std::optional<TXMLDeclaration> Element;
    TXMLWildcard Wildcard;
    uint32_t End = 0;  ///< index after the last of its parts
};

struct TXMLContent {
    std::vector<TXMLParticle> Particles;  ///< the first holds all others; none for an empty content
    bool IsCoarse = false;                ///< nested too deeply or too large: the names alone
};

/// The base's content before the type's own, groups and the members of substitution groups in
/// their places. Empty for a simple type.
TXMLContent ReadContent(const TXMLType& type);
/// All global elements of the library that a schema belongs to, abstract ones left out.
std::vector<TXMLDeclaration> ReadGlobals(const TXMLSchema& schema);

}  // namespace caretwell
