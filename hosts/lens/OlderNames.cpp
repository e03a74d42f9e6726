#include "lens/OlderNames.h"

#include <algorithm>
#include <iterator>

#include "lens/StyleScan.h"

namespace caretwell {
namespace {

struct TOlderName {
    std::string_view FOlder, FToday;
};

constexpr TOlderName Names[] = {
    // The flexible boxes of 2012.
    {"flex-align", "box-align"},
    {"flex-item-align", "align-self"},
    {"flex-line-pack", "align-content"},
    {"flex-negative", "flex-shrink"},
    {"flex-order", "order"},
    {"flex-pack", "box-pack"},
    {"flex-positive", "flex-grow"},
    {"flex-preferred-size", "flex-basis"},
    // Sides by the flow of text, before they had their names.
    {"border-after", "border-bottom"},
    {"border-after-color", "border-bottom-color"},
    {"border-after-style", "border-bottom-style"},
    {"border-after-width", "border-bottom-width"},
    {"border-before", "border-top"},
    {"border-before-color", "border-top-color"},
    {"border-before-style", "border-top-style"},
    {"border-before-width", "border-top-width"},
    {"border-end", "border-right"},
    {"border-end-color", "border-right-color"},
    {"border-end-style", "border-right-style"},
    {"border-end-width", "border-right-width"},
    {"border-start", "border-left"},
    {"border-start-color", "border-left-color"},
    {"border-start-style", "border-left-style"},
    {"border-start-width", "border-left-width"},
    {"margin-after", "margin-bottom"},
    {"margin-before", "margin-top"},
    {"margin-end", "margin-right"},
    {"margin-start", "margin-left"},
    {"padding-after", "padding-bottom"},
    {"padding-before", "padding-top"},
    {"padding-end", "padding-right"},
    {"padding-start", "padding-left"},
    // Corners.
    {"border-radius-bottomleft", "border-bottom-left-radius"},
    {"border-radius-bottomright", "border-bottom-right-radius"},
    {"border-radius-topleft", "border-top-left-radius"},
    {"border-radius-topright", "border-top-right-radius"},
    {"outline-radius", "border-radius"},
    // Columns and masks.
    {"column-break-after", "break-after"},
    {"column-break-before", "break-before"},
    {"column-break-inside", "break-inside"},
    {"mask-attachment", "background-attachment"},
    {"mask-box-image", "mask-border"},
    {"mask-position-x", "background-position-x"},
    {"mask-position-y", "background-position-y"},
    // Those that never lost their prefix, by what they take.
    {"border-bottom-colors", "border-color"},
    {"border-left-colors", "border-color"},
    {"border-right-colors", "border-color"},
    {"border-top-colors", "border-color"},
    {"tap-highlight-color", "color"},
    {"text-fill-color", "color"},
    {"text-stroke-color", "color"},
    {"text-stroke-width", "outline-offset"},
    // The same, where no other property takes all that they take: a part of it.
    {"font-smoothing", "overflow-anchor"},
    {"interpolation-mode", "all"},
    {"osx-font-smoothing", "z-index"},
    {"overflow-scrolling", "z-index"},
    {"overflow-style", "overflow-anchor"},
    {"touch-callout", "line-clamp"},
};

}  // namespace

std::string_view TodaysName(std::string_view behindPrefix) {
    const auto found = std::find_if(std::begin(Names), std::end(Names), [&](const TOlderName& name) {
        return SameWord(behindPrefix, name.FOlder);
    });
    return found == std::end(Names) ? behindPrefix : found->FToday;
}

}  // namespace caretwell
