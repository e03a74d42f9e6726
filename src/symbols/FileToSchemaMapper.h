// Which schema a free XML file gets by its extension, and which directives a kind of
// server page has.      Web.config   ->   schemas/DotNetConfig.xsd
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "caretwell/host/Nibapi.h"

namespace caretwell {

/// Extensions come with their point and without regard to case. Registering an
/// extension that is taken changes nothing (false); an empty schema removes it.
struct IFileToSchemaMapperService : IRefCounted {
    static constexpr TGuid Id = Guid("a1beaa00-20f7-480c-9c36-1d52fd766afc");
    using Parent = IRefCounted;
    virtual bool RegisterSchema(std::string_view extension, std::string_view schemaFile) = 0;
    virtual bool RegisterDirectiveSchema(std::string_view extension, std::string_view schemaFile) = 0;
    virtual bool HasDirectiveSchema(std::string_view fileName) = 0;
    /// Full name of the schema file, which may not exist; empty if the extension is unknown.
    virtual std::string GetDirectiveSchema(std::string_view fileName) = 0;
    virtual bool HasSchema(std::string_view fileName) = 0;
    virtual std::string GetSchema(std::string_view fileName) = 0;
};

class TFileToSchemaMapperService final : public TImplements<IFileToSchemaMapperService> {
public:
    bool RegisterSchema(std::string_view extension, std::string_view schemaFile) override;
    bool RegisterDirectiveSchema(std::string_view extension, std::string_view schemaFile) override;
    bool HasDirectiveSchema(std::string_view fileName) override;
    std::string GetDirectiveSchema(std::string_view fileName) override;
    bool HasSchema(std::string_view fileName) override;
    std::string GetSchema(std::string_view fileName) override;

private:
    using TTable = std::unordered_map<std::string, std::string>;
    TTable FDirectiveSchemas;
    TTable FSchemas;
};

/// The one service of the process, made on first use.
CARETWELL_API TRef<IFileToSchemaMapperService> GetFileToSchemaMapperService();
/// Called at shut-down.
void ReleaseFileToSchemaMapperService();

}  // namespace caretwell
