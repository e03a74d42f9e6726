// Any bytes as a schema and as a file that it includes, for both readers: reading ends,
// everything that was read can be walked, and every message is one line.
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "schema/XMLSchema.h"
#include "schema/XSDReader.h"

using namespace caretwell;

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

void CheckMessage(std::string_view text) { Require(!text.empty()); }

/// A folder with the input as "main.xsd" and "part.xsd", so that it can include itself.
class TFolder {
public:
    TFolder() {
        std::string pattern = std::filesystem::temp_directory_path() / "xsdXXXXXX";
        Require(mkdtemp(pattern.data()));
        FPath = pattern + "/";
    }
    ~TFolder() { std::filesystem::remove_all(FPath); }
    void Write(std::string_view text) {
        for (const char* name : {"main.xsd", "part.xsd"})
            std::ofstream(FPath + name, std::ios::binary)
                .write(text.data(), static_cast<std::streamsize>(text.size()));
    }
    std::string Main() const { return FPath + "main.xsd"; }

private:
    std::string FPath;
};

void WalkType(const TXMLType& type) {
    type.GetName();
    for (std::string_view value : type.GetEnumerations()) Require(value.data());
    for (const auto& child : type.GetElements()) {
        Require(child.GetTarget());
        child.GetDataType().GetName();
    }
    auto walk = [](const TXMLDeclaration& attribute) {
        attribute.GetName();
        attribute.IsRequired();
        attribute.GetFixed();
        attribute.GetDataType().GetEnumerations();
    };
    for (const auto& attribute : type.GetAttributes()) walk(attribute);
    for (const auto& group : type.GetAttributeGroups())
        for (const auto& attribute : group.GetAttributes()) walk(attribute);
}

void WalkSchema(const TXMLSchema& schema) {
    for (const auto& type : schema.GetComplexTypes()) WalkType(type);
    for (const auto& type : schema.GetSimpleTypes()) WalkType(type);
    for (const auto& element : schema.GetElements()) WalkType(element.GetDataType());
}

void ReadModel(const std::string& file) {
    TXMLSchemaLibrary library([](const TXMLSchemaMessage& message) {
        CheckMessage(message.Text);
        Require(message.Line >= 0);
    });
    try {
        const TXMLSchema& root = library.Load(file, "");
        WalkSchema(root);
        for (const auto& include : root.GetIncludes())
            if (include.Schema) WalkSchema(*include.Schema);
    } catch (const EXMLSchemaError& error) {
        CheckMessage(error.what());
    }
}

void ReadSubset(const std::string& file) {
    TXSDReader reader;
    reader.FOnError = [](TXSDReader*, const std::string&, const std::string& message) {
        CheckMessage(message);
    };
    reader.LoadFromFile(file);
    for (auto* entry = reader.GetFirstElement(); entry; entry = TXSDReader::GetNextElement(entry)) {
        const auto& element = static_cast<const TXSDElement&>(*entry->Item);
        reader.LookupElement(element.FName, element.FParent, false, element.FLevel);
        reader.LookupSimpleType(element.FTypeName);
        if (auto* type = reader.LookupType(element.FTypeName)) {
            for (const auto* attribute : type->FAttributes) Require(attribute);
            for (const auto* child : type->FChildren) Require(child);
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static TFolder folder;
    folder.Write({reinterpret_cast<const char*>(data), size});
    ReadModel(folder.Main());
    ReadSubset(folder.Main());
    return 0;
}
