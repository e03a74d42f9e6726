// Reading schemas: each shipped file from cold, and making the table again from a reader
// that has its file.
#include <malloc.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "bench/Measure.h"
#include "bench/Session.h"
#include "stylesheet/CSSSchemaLoader.h"
#include "symbols/SchemaReaderCache.h"

namespace caretwell::bench {
namespace {

struct TSchemaFile {
    std::string Path, Name;
};

std::vector<TSchemaFile> FindSchemaFiles() {
    std::vector<TSchemaFile> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(SchemaFolder())) {
        std::string extension = entry.path().extension().string();
        if (extension != ".dtd" && extension != ".xsd" && entry.path().filename() != "css.xml") continue;
        files.push_back(
            {entry.path().string(), std::filesystem::relative(entry.path(), SchemaFolder()).string()});
    }
    std::sort(files.begin(), files.end(), [](const auto& a, const auto& b) { return a.Name < b.Name; });
    return files;
}

// Which of the two XSD readers a file goes to follows from the documents that it serves.
bool ServesFreeDocuments(const std::string& name) {
    return name == "DotNetConfig.xsd" || name == "SiteMapSchema.xsd" || name == "recipes.xsd";
}

TKibitzMode ModeOf(const std::string& name) {
    if (name == "xsl.dtd") return kmXSL;
    if (name == "wml12.dtd") return kmWML;
    if (name == "resxschema.xsd") return kmResX;
    return ServesFreeDocuments(name) ? kmXML : kmHTML;
}

/// A table with one schema in it; the readers stay when it goes.
class TTableOf {
public:
    explicit TTableOf(const TSchemaFile& file) {
        auto root = MakeRef<THTMLTag>(u"<!--root-->", &FManager, -1);
        FManager.SetKibitzMode(ModeOf(file.Name));
        FManager.SetHiddenRootNode(root);
        if (file.Name.ends_with(".dtd")) FManager.LoadDTD(*root, file.Path);
        else if (ServesFreeDocuments(file.Name)) FManager.LoadXSDEx(*root, nullptr, file.Path);
        else FManager.LoadXSD(*root, nullptr, file.Path);
    }
    ~TTableOf() { FManager.ClearTags(); }
    TTableOf(const TTableOf&) = delete;
    TTableOf& operator=(const TTableOf&) = delete;
    bool IsEmpty() const { return FManager.GetTagList().empty(); }

private:
    TMLSymbolManager FManager;
};

/// The same for css.xml, for which nothing is kept.
class TStyleTable {
public:
    explicit TStyleTable(const TSchemaFile& file) {
        TCSSReader reader(FTable);
        reader.LoadFromFile(file.Path);
        reader.Resolve();
    }
    bool IsEmpty() { return FTable.FProperties.Count() == 0; }

private:
    TCSSSymbolTable FTable{nullptr};
};

void FreeReaders() {
    FreeDTDReaders();
    FreeXSDReaders();
}

double HeapBytes() {
    struct mallinfo2 heap = mallinfo2();
    return static_cast<double>(heap.uordblks + heap.hblkhd);
}

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// All bytes that reading a schema has to look at: the file and what it includes, once each.
std::string ReadWhole(const std::string& path) {
    std::string text = ReadFile(path);
    for (const auto& entry : std::filesystem::directory_iterator(SchemaFolder())) {
        std::string name = entry.path().filename().string();
        if (text.find('"' + name + "\">") != std::string::npos) text += ReadFile(entry.path().string());
    }
    return text;
}

template <class TAnyTable>
void ReadCold(benchmark::State& state, const TSchemaFile& file) {
    TSession session;
    for (auto _ : state) {
        FreeReaders();
        std::unique_ptr<TAnyTable> table;
        {
            TLap lap(state);
            table = std::make_unique<TAnyTable>(file);
        }
        if (table->IsEmpty()) state.SkipWithError("nothing was read");
    }
    SetYardstick(state, ByteSwitch, TimeSweep(SweepBySwitch, ReadWhole(file.Path)));
}

template <class TAnyTable>
void WeighSchema(benchmark::State& state, const TSchemaFile& file) {
    TSession session;
    FreeReaders();
    double before = HeapBytes();
    for (auto _ : state) {
        TLap lap(state);
        TAnyTable table(file);
        state.counters[MegabytesCounter] = (HeapBytes() - before) / 1e6;
    }
    SetYardstick(state, "the files", static_cast<double>(ReadWhole(file.Path).size()) / 1e6);
}

void ReloadTable(benchmark::State& state, const TSchemaFile& file) {
    TSession session;
    TTableOf first(file);
    for (auto _ : state) {
        std::unique_ptr<TTableOf> table;
        {
            TLap lap(state);
            table = std::make_unique<TTableOf>(file);
        }
        if (table->IsEmpty()) state.SkipWithError("nothing was read");
    }
}

constexpr double MarkOf(std::string_view name, double whole) { return name == "loose.dtd" ? whole : 0; }

}  // namespace

void RegisterSchemas() {
    auto files = FindSchemaFiles();
    auto isStyle = [](const TSchemaFile& file) { return file.Name == "css.xml"; };
    for (const TSchemaFile& file : files)
        Measure({.Group = "reading a schema from cold", .Name = file.Name, .Mark = MarkOf(file.Name, 10)},
                [file, isStyle](benchmark::State& state) {
                    if (isStyle(file)) ReadCold<TStyleTable>(state, file);
                    else ReadCold<TTableOf>(state, file);
                });
    for (const TSchemaFile& file : files)
        Measure({.Group = "memory of a schema with its table",
                 .Name = file.Name,
                 .Unit = tuMegabytes,
                 .Mark = MarkOf(file.Name, 6),
                 .RunsOnce = true},
                [file, isStyle](benchmark::State& state) {
                    if (isStyle(file)) WeighSchema<TStyleTable>(state, file);
                    else WeighSchema<TTableOf>(state, file);
                });
    for (const TSchemaFile& file : files)
        if (!isStyle(file))
            Measure({.Group = "reload of the table, reader kept", .Name = file.Name},
                    [file](benchmark::State& state) { ReloadTable(state, file); });
}

}  // namespace caretwell::bench
