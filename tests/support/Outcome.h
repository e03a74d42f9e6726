// The whole outcome of a parse and of an open list as text, so that two hosts can be compared.
#pragma once

#include <sstream>

#include "support/ParseState.h"

namespace caretwell::test {

/// The whole outcome of a parse and of an open list, but for the place of the current tag,
/// which is 0 when this very parse has loaded the schema.
inline std::string Outcome(TTestHost& host) {
    auto& manager = MLSymbolManager();
    // A document whose schema is missing was read by the one before.
    if (manager.GetSchemaFile().empty())
        return host.Driver().IsOpen() ? "open without a schema" : "no schema";
    std::ostringstream out;
    out << host.Driver().IsOpen() << ' ' << static_cast<int>(host.Manager().GetListKind());
    for (const auto& item : host.Driver().Items())
        out << ' ' << ToUtf8(item.Name) << '/' << ToUtf8(item.Type) << '/' << ToUtf8(item.Class);
    TParseState state = StateOf(host);
    out << "\ntag " << state.InTag << state.InClosingTag << state.InTagName << state.InScript << state.InStyle
        << state.InTextArea << state.InDocType << state.IsXML << state.IsUnterminated << ' ' << state.Tag
        << ' ' << state.LastKnown << ' ' << state.Parent << ' ' << state.Owner;
    out << "\nvalue " << state.Attribute << ' ' << state.ValueLine << ':' << state.ValueColumn << ' '
        << state.ValueOffset << ' ' << state.RegionStart << ' ' << state.Column << " regions"
        << state.Regions;
    for (const auto* open : {&state.AtCaret, &state.InDocument}) {
        out << "\nopen";
        for (const auto& tag : *open) {
            out << ' ' << tag.Name << ':' << tag.Line << ':' << tag.Start << '-' << tag.End;
            if (open == &state.AtCaret) out << '(' << tag.Attributes << ')';
        }
    }
    out << "\nwritten";
    for (const auto& attribute : state.Written)
        out << ' ' << attribute.Name << '=' << attribute.Value << '@' << attribute.Start << '-'
            << attribute.End;
    out << "\nclosing";
    for (const auto& tag : state.Closing) out << ' ' << tag.Name;
    for (int32_t offset : state.AutoClose) out << " auto " << offset;
    out << " hidden " << manager.GetHiddenAttrCount() << " schema " << manager.GetSchemaFile();
    return out.str();
}

}  // namespace caretwell::test
