// Stretches of a document that are not markup, as rows: how each begins, what its end looks
// like, and what observers are told of it.
#pragma once

#include <cstddef>
#include <string_view>

#include "markup/MLParserUtils.h"
#include "parser/CaretState.h"

namespace caretwell {

struct TRegionRule {
    /// What a quote does inside: nothing, open a string that ends on its line, or one of any length.
    enum class TStrings { None, OfOneLine, OfAnyLength };
    TParserContexts Region;
    std::string_view Begin;     ///< after the "<"
    std::string_view Stops;     ///< the bytes that are looked at
    std::string_view EndBytes;  ///< at least so many of one of these
    size_t EndCount = 1;        ///< and then ">" are the end
    TTagType Type = ttComment;  ///< observers are told of
    size_t EndLength = 0;       ///< bytes of the end that are no text of the region; 0: they are told nothing
    TStrings Strings = TStrings::None;
    bool NestsScripts = false;               ///< "<%" inside begins a script that has its own end
    bool TCaretState::*CaretFlag = nullptr;  ///< set while the caret stands inside
};

/// A single "-" before ">" ends a comment too, unlike the standard, and "/>" an instruction.
/// Nothing in CDATA is markup.
inline constexpr TRegionRule MarkedRegions[] = {
    {.Region = pcHTMLComment,
     .Begin = "!--",
     .Stops = "-",
     .EndBytes = "-",
     .Type = ttComment,
     .EndLength = 3},
    {.Region = pcCDATA, .Begin = "![CDATA[", .Stops = "]", .EndBytes = "]", .EndCount = 2},
    {.Region = pcProcessingInstruction,
     .Begin = "?",
     .Stops = "\"'?/",
     .EndBytes = "?/",
     .Type = ttProcessingInstruction,
     .EndLength = 2,
     .Strings = TRegionRule::TStrings::OfOneLine},
};
inline constexpr TRegionRule ServerScriptRegion = {.Region = pcServerSideScript,
                                                   .Begin = "%",
                                                   .Stops = "%",
                                                   .EndBytes = "%",
                                                   .Type = ttServerScript,
                                                   .EndLength = 2,
                                                   .CaretFlag = &TCaretState::FInScript};
inline constexpr TRegionRule ServerCommentRegion = {.Region = pcAspComment,
                                                    .Begin = "%--",
                                                    .Stops = "<%",
                                                    .EndBytes = "%",
                                                    .Type = ttAspComment,
                                                    .EndLength = 2,
                                                    .NestsScripts = true,
                                                    .CaretFlag = &TCaretState::FInScript};
/// "[ ... ]" of a doctype: its strings name no schema, its declarations are no tags.
inline constexpr TRegionRule InternalSubsetRegion = {.Region = pcInternalSubset,
                                                     .Begin = {},
                                                     .Stops = "]\"'<",
                                                     .EndBytes = "]",
                                                     .Strings = TRegionRule::TStrings::OfAnyLength};

}  // namespace caretwell
