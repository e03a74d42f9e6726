// The words of the call:  caretwell complete page.html:12:8 --key '<' --json
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace caretwell {

/// Everything that the command line can say; a command reads what concerns it.
struct TArguments {
    std::string Command;
    std::string Target;  ///< PLACE or FILE as given; "-" is standard input

    // Where and in what.
    std::string Mark;  ///< stands for the caret in the text; empty: none
    std::string Name;  ///< what standard input is called; empty: not said
    std::string Schemas;
    std::vector<std::pair<std::string, std::string>> Maps;  ///< extension, schema file
    std::vector<std::pair<std::string, std::string>> Settings;
    std::map<std::string, std::string> Answers;

    // What to do there.
    std::string Key;
    std::string Item;
    std::string Close = "enter";
    std::string Keys;
    bool InPlace = false;
    bool Plain = false;  ///< no lens before style text
    bool Json = false;
};

/// Raises TFailure if the words are off. A call for help is answered on standard
/// output, and the command is then empty.
TArguments ReadArguments(int count, const char* const* words);

}  // namespace caretwell
