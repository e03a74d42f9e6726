#include "symbols/FileToSchemaMapper.h"

#include <algorithm>

#include "host/Paths.h"
#include "host/Platform.h"
#include "markup/Text.h"

namespace caretwell {
namespace {

TRef<IFileToSchemaMapperService>& Service() {
    static TRef<IFileToSchemaMapperService> service;
    return service;
}

std::string Lower(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), ToLower<char>);
    return result;
}

bool Register(std::unordered_map<std::string, std::string>& table, std::string_view extension,
              std::string_view schemaFile) {
    std::string key = Lower(extension);
    if (schemaFile.empty()) return table.erase(key) > 0;
    return table.emplace(key, schemaFile).second;
}

std::string PathOf(const std::unordered_map<std::string, std::string>& table, std::string_view fileName) {
    auto row = table.find(ExtensionOf(fileName));
    return row == table.end() ? std::string() : GetPlatform().SchemaFolder() + row->second;
}

}  // namespace

bool TFileToSchemaMapperService::RegisterSchema(std::string_view extension, std::string_view schemaFile) {
    return Register(FSchemas, extension, schemaFile);
}
bool TFileToSchemaMapperService::RegisterDirectiveSchema(std::string_view extension,
                                                         std::string_view schemaFile) {
    return Register(FDirectiveSchemas, extension, schemaFile);
}
bool TFileToSchemaMapperService::HasDirectiveSchema(std::string_view fileName) {
    return FDirectiveSchemas.count(ExtensionOf(fileName)) > 0;
}
std::string TFileToSchemaMapperService::GetDirectiveSchema(std::string_view fileName) {
    return PathOf(FDirectiveSchemas, fileName);
}
bool TFileToSchemaMapperService::HasSchema(std::string_view fileName) {
    return FSchemas.count(ExtensionOf(fileName)) > 0;
}
std::string TFileToSchemaMapperService::GetSchema(std::string_view fileName) {
    return PathOf(FSchemas, fileName);
}

TRef<IFileToSchemaMapperService> GetFileToSchemaMapperService() {
    if (!Service()) Service() = MakeRef<TFileToSchemaMapperService>();
    return Service();
}

void ReleaseFileToSchemaMapperService() { Service() = nullptr; }

}  // namespace caretwell
