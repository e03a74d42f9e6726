// schema: what the engine makes of a schema file. A DTD or an XSD is loaded the way a
// document that asks for it would load it, and the table is walked.
#include <algorithm>

#include "cli/Commands.h"
#include "cli/Run.h"
#include "cli/SchemaReport.h"
#include "host/Paths.h"
#include "symbols/FileToSchemaMapper.h"

namespace caretwell {
namespace {

struct TSchemaPath {
    std::string Folder;  ///< with its separator
    std::string Name;
};

TSchemaPath SplitPath(const std::string& path) {
    size_t slash = path.rfind('/');
    if (slash == std::string::npos) return {"./", path};
    return {path.substr(0, slash + 1), path.substr(slash + 1)};
}

/// A file where the call says, or else of that name in the schema folder.
std::string FindSchema(const TArguments& arguments) {
    auto platform = MakePlatform({.SchemaFolder = arguments.Schemas});
    if (platform->FileExists(arguments.Target)) return arguments.Target;
    std::string inFolder = platform->SchemaFolder() + arguments.Target;
    return platform->FileExists(inFolder) ? inFolder : arguments.Target;
}

// A document whose schema is the file. Of XSD files those that describe server pages
// and ResX go by a road of their own; any other is that of a free document.
struct TSample {
    std::string Text, FileName;
};

constexpr const char* SampleExtension = ".caretwell-sample";

bool IsForServerPages(const TSchemaPath& path) {
    return path.Folder.ends_with("/asp schemas/") || path.Folder == "asp schemas/" ||
           path.Name.ends_with("_directives.xsd") || path.Name == "resxschema.xsd";
}

bool IsFree(const TSchemaPath& path) { return ExtensionOf(path.Name) == ".xsd" && !IsForServerPages(path); }

// A free document's schema may lie deeper in the folder that the call gives, and its
// includes anywhere in that folder.
TSchemaPath InFolder(const TSchemaPath& path, std::string folder) {
    if (folder.empty()) return path;
    if (!folder.ends_with('/')) folder += '/';
    std::string name = NormalPath(path.Folder + path.Name), normal = NormalPath(folder);
    bool isInside = IsInFolder(name, normal);
    return isInside && IsFree(path) ? TSchemaPath{folder, name.substr(normal.size())} : path;
}

TSample MakeSample(const TSchemaPath& path) {
    if (IsFree(path)) return {" ", std::string("sample") + SampleExtension};
    char quote = path.Name.find('"') == std::string::npos ? '"' : '\'';
    return {std::string("<!DOCTYPE sample SYSTEM ") + quote + "./" + path.Name + quote + ">", "sample.html"};
}

TExitStatus ReportMarkup(const TArguments& arguments, const TSchemaPath& path) {
    TArguments own = arguments;
    own.Maps.emplace_back(SampleExtension, path.Name);
    TRun run(own, path.Folder, {});
    TSample sample = MakeSample(path);
    TDocument& document = run.Open(TSource{sample.FileName, sample.Text});
    run.Engine().Markup().SetTagCase(tcNormal);
    run.Engine().Parse(document);
    const auto& messages = run.Engine().Host().Messages().Messages();
    TJson json = DescribeMarkup(run.Engine().Symbols(), messages);
    WriteOutput(arguments.Json ? JsonLine(json) : MarkupText(json));
    bool isFaulty = std::any_of(messages.begin(), messages.end(), [](const TMessage& message) {
        return message.Prefix != "Warning" && message.Prefix != "Hint";
    });
    return isFaulty ? esNothing : esDone;
}

TExitStatus ReportStyle(const TArguments& arguments, const std::string& file) {
    std::vector<TMessage> messages;
    TJson json = DescribeStyle(file, messages);
    for (const TMessage& message : messages) WriteError(MessageLine(message, {}));
    WriteOutput(arguments.Json ? JsonLine(json) : StyleText(json));
    return messages.empty() ? esDone : esNothing;
}

}  // namespace

TExitStatus RunSchema(const TArguments& arguments) {
    std::string file = FindSchema(arguments);
    if (std::string problem = WhyUnreadable(file); !problem.empty()) throw TFailure(esUnreadable, problem);
    std::string extension = ExtensionOf(file);
    if (extension == ".xml") return ReportStyle(arguments, file);
    if (extension == ".dtd" || extension == ".xsd")
        return ReportMarkup(arguments, InFolder(SplitPath(file), arguments.Schemas));
    throw TFailure(esWords, file + ": a .dtd, an .xsd or a css.xml is wanted");
}

}  // namespace caretwell
