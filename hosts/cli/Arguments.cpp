#include "cli/Arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>

#include "cli/Failure.h"
#include "markup/Text.h"

namespace caretwell {
namespace {

using TWords = std::vector<std::string>;

constexpr const char* Version = "caretwell 0.1.0";

// NAME=VALUE; the value may be empty and may hold further "=".
std::pair<std::string, std::string> SplitPair(const std::string& option, const std::string& word) {
    size_t equals = word.find('=');
    if (equals == std::string::npos || equals == 0)
        throw TFailure(esWords, option + " " + word + ": NAME=VALUE is wanted");
    return {word.substr(0, equals), word.substr(equals + 1)};
}

// What the options that may be given several times have collected.
struct TRepeated {
    TWords Maps, Settings, Answers;
};

void AddEach(CLI::App& command, const char* name, TWords& words, const char* help, const char* form) {
    command.add_option(name, words, help)->type_name(form)->expected(1)->allow_extra_args(false)->take_all();
}

void AddCommon(CLI::App& command, TArguments& arguments, TRepeated& repeated) {
    command.add_option("--schemas", arguments.Schemas, "Schema folder")->type_name("DIR");
    AddEach(command, "--map", repeated.Maps, "Schema file of the folder for an extension", ".EXT=FILE");
    AddEach(command, "--setting", repeated.Settings, "Setting for this run", "NAME=VALUE");
    command.add_flag("--json", arguments.Json, "Print JSON");
}

void AddDocument(CLI::App& command, TArguments& arguments) {
    command.add_option("--name", arguments.Name, "What standard input is called")->type_name("FILE");
}

void AddPlace(CLI::App& command, TArguments& arguments) {
    command
        .add_option(
            "place", arguments.Target,
            "FILE:LINE:COLUMN, both from 1, columns in characters; with --mark FILE; - is standard input")
        ->required()
        ->type_name("PLACE");
    command.add_option("--mark", arguments.Mark, "The text that stands for the caret")->type_name("M");
    AddDocument(command, arguments);
    command.add_flag("--plain", arguments.Plain, "Show style sheets as they are, without the lens");
}

void AddEditing(CLI::App& command, TArguments& arguments, TRepeated& repeated) {
    AddEach(command, "--answer", repeated.Answers, "Answer of a dialog: color, uri, length ...",
            "NAME=VALUE");
    command.add_flag("--in-place", arguments.InPlace, "Write the file instead of printing the text");
}

CLI::App* AddCommand(CLI::App& app, TArguments& arguments, TRepeated& repeated, const char* name,
                     const char* help) {
    CLI::App* command = app.add_subcommand(name, help);
    AddCommon(*command, arguments, repeated);
    return command;
}

CLI::Option* AddKey(CLI::App& command, TArguments& arguments) {
    return command
        .add_option("--key", arguments.Key, "Open as this trigger key, which the text holds already")
        ->type_name("C");
}

void Describe(CLI::App& app, TArguments& arguments, TRepeated& repeated) {
    app.require_subcommand(1);
    app.set_version_flag("--version", Version);
    auto add = [&](const char* name, const char* help) {
        return AddCommand(app, arguments, repeated, name, help);
    };
    CLI::App* complete = add("complete", "Print what may stand at a place");
    AddPlace(*complete, arguments);
    AddKey(*complete, arguments);

    CLI::App* choose = add("choose", "Take an item of the list and print the text that results");
    AddPlace(*choose, arguments);
    AddKey(*choose, arguments);
    choose->add_option("--item", arguments.Item, "The item as the list shows it")
        ->required()
        ->type_name("TEXT");
    choose->add_option("--close", arguments.Close, "enter, tab, space, escape or one character")
        ->type_name("K");
    AddEditing(*choose, arguments, repeated);

    CLI::App* type = add("type", "Type at a place as a user would and print the text that results");
    AddPlace(*type, arguments);
    type->add_option(
            "--keys", arguments.Keys,
            "Characters and {Enter} {Tab} {Esc} {Ctrl+Space} {Up} {Down} {Left} {Right} {Backspace} {{}")
        ->required()
        ->type_name("KEYS");
    AddEditing(*type, arguments, repeated);

    AddPlace(*add("explain", "Print what the engine sees at a place"), arguments);

    CLI::App* events = add("events", "Print what a parse tells an observer");
    events->add_option("file", arguments.Target, "The document; - is standard input")
        ->required()
        ->type_name("FILE");
    AddDocument(*events, arguments);

    add("schema", "Print what the engine makes of a DTD, an XSD or a css.xml")
        ->add_option("file", arguments.Target, "A path, or a name in the schema folder")
        ->required()
        ->type_name("FILE");
}

// A colon after "-" would make the place an option.
constexpr char InputPrefix = '\x1f';

// The library takes its words from back to front.
TWords PrepareWords(int count, const char* const* words) {
    TWords result;
    for (int i = count - 1; i > 0; --i) {
        std::string word = words[i];
        result.push_back(word.starts_with("-:") ? InputPrefix + word : std::move(word));
    }
    return result;
}

std::string OneLine(std::string text) {
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

// The library would only say that a command is missing.
void CheckCommand(CLI::App& app, int count, const char* const* words) {
    if (count < 2 || words[1][0] == '-') return;
    auto isMeant = [&](const CLI::App* command) { return command->get_name() == words[1]; };
    if (app.get_subcommands(isMeant).empty())
        throw TFailure(esWords, std::string(words[1]) + ": no such command, see --help");
}

// What the library cannot know of the words.
void Check(const CLI::App& command, TArguments& arguments, const TRepeated& repeated) {
    if (arguments.Target.starts_with(InputPrefix)) arguments.Target.erase(0, 1);
    const CLI::Option* mark = command.get_option_no_throw("--mark");
    if (mark && mark->count() > 0 && arguments.Mark.empty())
        throw TFailure(esWords, "--mark: an empty text cannot stand for the caret");
    const CLI::Option* schemas = command.get_option_no_throw("--schemas");
    if (schemas->count() > 0 && arguments.Schemas.empty())
        throw TFailure(esWords, "--schemas: the name of a folder is wanted");
    const CLI::Option* key = command.get_option_no_throw("--key");
    if (key && key->count() > 0 && ToUtf16(arguments.Key).size() != 1)
        throw TFailure(esWords, "--key " + arguments.Key + ": one character is wanted");
    for (const auto& word : repeated.Maps) {
        auto map = SplitPair("--map", word);
        if (!map.first.starts_with('.')) throw TFailure(esWords, "--map " + word + ": .EXT=FILE is wanted");
        arguments.Maps.push_back(std::move(map));
    }
    for (const auto& word : repeated.Settings) arguments.Settings.push_back(SplitPair("--setting", word));
    for (const auto& word : repeated.Answers) {
        auto [name, value] = SplitPair("--answer", word);
        arguments.Answers.insert_or_assign(std::move(name), std::move(value));
    }
}

}  // namespace

TArguments ReadArguments(int count, const char* const* words) {
    TArguments arguments;
    TRepeated repeated;
    CLI::App app("Completion for markup and style sheets, by the schemas that are read at run time.",
                 "caretwell");
    Describe(app, arguments, repeated);
    CheckCommand(app, count, words);
    try {
        app.parse(PrepareWords(count, words));
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() != 0) throw TFailure(esWords, OneLine(error.what()) + ", see --help");
        bool isVersion = dynamic_cast<const CLI::CallForVersion*>(&error) != nullptr;
        std::string answer = isVersion ? std::string(Version) + "\n" : app.help();
        std::fputs(answer.c_str(), stdout);
        return {};
    }
    const CLI::App& command = *app.get_subcommands().front();
    arguments.Command = command.get_name();
    Check(command, arguments, repeated);
    return arguments;
}

}  // namespace caretwell
