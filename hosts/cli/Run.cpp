#include "cli/Run.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace caretwell {
namespace {

// The engine's word in front of a message about a schema file that is not there.
constexpr std::string_view MissingSchema = "Code Completion";

}  // namespace

void WriteError(std::string_view line) {
    std::string text(line);
    for (char& c : text)
        if (c == '\n' || c == '\r') c = ' ';
    text += '\n';
    std::fwrite(text.data(), 1, text.size(), stderr);
}

void WriteOutput(std::string_view text) {
    bool isWritten =
        std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
    if (!isWritten) throw TFailure(esUnreadable, std::string("standard output: ") + std::strerror(errno));
}

std::string WhyUnreadable(const std::string& path) {
    return access(path.c_str(), R_OK) == 0 ? std::string() : path + ": " + std::strerror(errno);
}

// A message that names no file is about the folder that the file should lie in.
std::string MessageLine(const TMessage& message, const std::string& schemaFolder) {
    std::string line = message.Prefix + ": " + (message.FileName.empty() ? schemaFolder : message.FileName);
    if (!message.FileName.empty() && message.Line > 0) line += ":" + std::to_string(message.Line);
    return line + ": " + message.Text;
}

TRun::TRun(const TArguments& arguments, TDialogAnswers::TAsk ask)
    : TRun(arguments, arguments.Schemas, std::move(ask)) {}

TRun::TRun(const TArguments& arguments, std::string schemaFolder, TDialogAnswers::TAsk ask)
    : FArguments(arguments),
      FEngine({.SchemaFolder = std::move(schemaFolder),
               .Maps = arguments.Maps,
               .Settings = arguments.Settings,
               .Answers = arguments.Answers,
               .Ask = std::move(ask),
               .UsesLens = !arguments.Plain,
               .Warn = [](std::string_view line) { WriteError("caretwell: " + std::string(line)); },
               .Echo = [this](const TMessage& message) { Echo(message); }}) {}

void TRun::Echo(const TMessage& message) {
    FIsSchemaMissing = FIsSchemaMissing || message.Prefix == MissingSchema;
    WriteError(MessageLine(message, FEngine.SchemaFolder()));
}

TDocument& TRun::Open(TPlace place) {
    CheckFolder();
    TDocument& document = FEngine.Open(std::move(place.Source.Text), place.Source.FileName);
    document.View().SetCaretOffset(place.Offset);
    return document;
}

void TRun::CheckFolder() {
    std::string problem = WhyUnreadable(FEngine.SchemaFolder());
    if (!problem.empty()) throw TFailure(esUnreadable, problem);
}

TDocument& TRun::Open(TSource source) {
    CheckFolder();
    TDocument& document = FEngine.Open(std::move(source.Text), std::move(source.FileName));
    document.View().SetCaretOffset(document.Text().Size());
    return document;
}

void TRun::OpenList(TDocument& document) {
    if (FArguments.Key.empty()) document.Driver().OpenList();
    else document.Driver().OpenListFor(ToUtf16(FArguments.Key).front());
}

// A schema that could not be read. The engine tells of the one that a document names; that
// the schema of its kind is missing it passes over.
std::optional<TFailure> TRun::FindMissing(TDocument& document) {
    if (FIsSchemaMissing) return TFailure(esUnreadable, {});
    std::string problem = WhyUnreadable(FEngine.SchemaFolder());
    auto manager = document.Driver().Manager();
    if (problem.empty() && manager) problem = WhyUnreadable(SchemaOf(*manager));
    return problem.empty() ? std::nullopt : std::optional(TFailure(esUnreadable, problem));
}

std::string TRun::SchemaOf(INibCodeInsightManager& manager) {
    if (IsStyleSheetManager(manager)) return FEngine.SchemaFolder() + "css.xml";
    TMLSymbolManager& symbols = FEngine.Symbols();
    const std::string& file = symbols.GetSchemaFile();
    return file.empty() ? GetSchemaFileName({}, symbols.GetKibitzMode()) : file;
}

void TRun::CheckSchema(TDocument& document) {
    if (auto missing = FindMissing(document)) throw *missing;
}

TFailure TRun::ExplainNothing(TDocument& document) {
    if (auto missing = FindMissing(document)) return *missing;
    const std::string& name = document.FileName();
    if (!document.Driver().Manager())
        return {esNothing, name + ": no schema is known for this kind of file, see --map"};
    auto [line, column] = LinePlaceAt(document.Text(), document.View().CaretOffset());
    std::string place = name + ":" + std::to_string(line) + ":" + std::to_string(column);
    return {esNothing, place + ": nothing is offered here"};
}

}  // namespace caretwell
