// Properties that once had another name after their prefix.
//   -ms-flex-order -> order     -webkit-tap-highlight-color -> color
#pragma once

#include <string_view>

namespace caretwell {

/// A property without prefix that takes what the prefixed one takes, or a part of it, by its name after
/// the prefix, in small letters or not. A name that today's property still has is given back.
std::string_view TodaysName(std::string_view behindPrefix);

}  // namespace caretwell
