// The command as a person calls it: from the start of a cold process to a printed list, and
// the peak of its memory.
#include <cstdio>
#include <filesystem>
#include <map>
#include <optional>

#include "bench/Folder.h"
#include "bench/Measure.h"
#include "bench/PageGenerator.h"
#include "bench/Session.h"

namespace caretwell::bench {
namespace {

struct TLaunch {
    int Status = -1;
    double Milliseconds = 0;
    double ProcessorMilliseconds = 0;
    double Bytes = 0;
};

std::string ProgramBesideThis(const char* name) {
    return (std::filesystem::read_symlink("/proc/self/exe").parent_path() / name).string();
}

/// Runs a command, once for all who ask; nothing if the launcher fails.
std::optional<TLaunch> Launch(const std::string& command) {
    static std::map<std::string, std::optional<TLaunch>> launches;
    auto [row, isNew] = launches.try_emplace(command);
    if (!isNew) return row->second;
    std::string line = "exec '" + ProgramBesideThis("bench_launch") + "' 20 " + command;
    FILE* answer = popen(line.c_str(), "r");
    TLaunch launch;
    bool isRead = answer && std::fscanf(answer, "%d %lf %lf %lf", &launch.Status, &launch.Milliseconds,
                                        &launch.ProcessorMilliseconds, &launch.Bytes) == 4;
    if (answer) pclose(answer);
    if (isRead) row->second = launch;
    return row->second;
}

// ---- documents

std::string PlaceOf(std::string_view text, size_t caret) {
    size_t line = 1, column = 1;
    for (char c : text.substr(0, caret)) {
        if (c == '\n') ++line, column = 1;
        else if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) ++column;
    }
    return ":" + std::to_string(line) + ":" + std::to_string(column);
}

std::string AskAt(const std::string& name, std::string_view text, size_t caret) {
    return "'" + ProgramBesideThis("caretwell") + "' complete '" + WriteWorkFile(name, text) +
           PlaceOf(text, caret) + "' --schemas '" + SchemaFolder() + "'";
}

std::string AskInPage(size_t bytes) {
    TPage page = MakePage(pkTagDense, bytes);
    size_t caret = FindInMiddle(page.Text, "</p>");
    page.Text.insert(caret, "<");
    return AskAt("page" + std::to_string(bytes) + ".html", page.Text, caret + 1);
}

std::string AskInSheet(size_t bytes) {
    std::string sheet = MakeSheet(skToday, bytes).Text;
    return AskAt("sheet" + std::to_string(bytes) + ".css", sheet, sheet.rfind("red;"));
}

std::string AskInConfig() {
    std::string text = "<configuration>\n<appSettings>\n";
    for (int i = 0; i < 2500; ++i) text += "<add key=\"k\" value=\"" + std::to_string(i) + "\" />\n";
    text += "</appSettings>\n<\n</configuration>\n";
    return AskAt("Web.config", text, text.rfind("<\n") + 1);
}

std::string AskInDocBook() {
    std::string folder = FolderWithDocBook();
    if (folder.empty()) return {};
    std::string_view text = "<book xmlns=\"http://docbook.org/ns/docbook\"><chapter><";
    std::string ask = AskAt("book.xml", text, text.size());
    return ask.substr(0, ask.find(" --schemas")) + " --schemas '" + folder + "' --map .xml=docbook.xsd";
}

// ---- rows

struct TCommand {
    std::string Name;
    std::function<std::string()> Ask;  // the command line
    double MostMilliseconds = 0, MostMegabytes = 0;
    std::string PeopleTime{}, PeopleMemory{};
};

const std::vector<TCommand>& Commands() {
    static const std::vector<TCommand> commands = {
        {"page of 100 KB", [] { return AskInPage(100'000); }, 25, 0, "800 ms", ""},
        {"page of 1 MB", [] { return AskInPage(1'000'000); }, 0, 15, "", "300 MB"},
        {"page of 10 MB", [] { return AskInPage(10'000'000); }},
        {"style sheet of 100 KB", [] { return AskInSheet(100'000); }, 25, 0, "", ""},
        {"style sheet of 1 MB", [] { return AskInSheet(1'000'000); }},
        {"Web.config of 80 KB, DotNetConfig.xsd", [] { return AskInConfig(); }},
        {"DocBook chapter, docbook.xsd", [] { return AskInDocBook(); }, 60, 0},
    };
    return commands;
}

std::optional<TLaunch> LaunchFor(benchmark::State& state, const TCommand& command) {
    std::string line = command.Ask();
    auto launch = line.empty() ? std::nullopt : Launch(line);
    if (line.empty()) state.SkipWithError("docbook5-xml is not installed");
    else if (!launch) state.SkipWithError("the launcher failed");
    else if (launch->Status != 0)
        state.SkipWithError(("exit status " + std::to_string(launch->Status)).c_str());
    return launch && launch->Status == 0 ? launch : std::nullopt;
}

void TimeCommand(benchmark::State& state, const TCommand& command) {
    auto launch = LaunchFor(state, command);
    for (auto _ : state) AddLap(state, launch ? launch->Milliseconds / 1e3 : 0);
    // Far above its own processor time, a figure tells of a busy machine.
    if (launch) SetYardstick(state, "its processor time", launch->ProcessorMilliseconds / 1e3);
    if (auto nothing = Launch("/bin/true")) SetYardstick(state, "/bin/true", nothing->Milliseconds / 1e3);
}

void WeighCommand(benchmark::State& state, const TCommand& command) {
    auto launch = LaunchFor(state, command);
    for (auto _ : state) AddLap(state, 0);
    state.counters[MegabytesCounter] = launch ? launch->Bytes / 1e6 : 0;
    if (auto nothing = Launch("/bin/true")) SetYardstick(state, "/bin/true", nothing->Bytes / 1e6);
}

}  // namespace

void RegisterProcesses() {
    for (const TCommand& command : Commands())
        Measure({.Group = "cold process to a printed list, median of 20",
                 .Name = command.Name,
                 .Mark = command.MostMilliseconds,
                 .People = command.PeopleTime,
                 .RunsOnce = true},
                [&command](benchmark::State& state) { TimeCommand(state, command); });
    for (const TCommand& command : Commands())
        Measure({.Group = "peak memory of that process",
                 .Name = command.Name,
                 .Unit = tuMegabytes,
                 .Mark = command.MostMegabytes,
                 .People = command.PeopleMemory,
                 .RunsOnce = true},
                [&command](benchmark::State& state) { WeighCommand(state, command); });
}

}  // namespace caretwell::bench
