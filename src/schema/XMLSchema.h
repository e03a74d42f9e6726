// An object model of XML Schema: what a schema says an element may hold, however the
// schema says it.
//
//     <xs:extension base="Shape"><xs:group ref="Corners"/>     GetElements of the type:
//                                    what Shape holds, then what the group holds
//
// Content models are seen flat: sequences, choices, groups by reference, attribute
// groups in attribute groups, extension, restriction and substitution groups are all
// worked out here, as late as somebody asks. Order and counts of elements are lost.
//
// A library owns everything; types and declarations are small handles into it, and
// texts are views into its documents. Nothing is ever read from the network or from
// outside the library's folder. What is wrong in a schema ends in a message, and the
// rest is used; depth, rings and size of a schema cost bounded time and memory.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace pugi {
struct xml_node_struct;
}

namespace caretwell {

class TXMLSchema;
class TXMLDeclaration;
class TXMLAttributeGroup;
struct TXMLComponent;
struct TXMLSchemaSet;

/// A schema that cannot be used at all. what() is a sentence for the user.
class EXMLSchemaError : public std::runtime_error {
public:
    EXMLSchemaError(const std::string& message, std::string fileName, int32_t line)
        : std::runtime_error(message), FFileName(std::move(fileName)), FLine(line) {}
    std::string FFileName;
    int32_t FLine;  ///< from 1; 0 if no line is to blame
};

enum TXMLSchemaSeverity : uint8_t { xsError, xsWarning, xsHint };

struct TXMLSchemaMessage {
    TXMLSchemaSeverity Severity;
    std::string FileName;
    int32_t Line;  ///< from 1; 0 if no line is to blame
    std::string Text;
};
using TXMLSchemaMessageEvent = std::function<void(const TXMLSchemaMessage&)>;

/// A simple or complex type, declared or built in.
class TXMLType {
public:
    TXMLType() = default;
    TXMLType(const TXMLSchema* schema, pugi::xml_node_struct* node) : FNode(node), FSchema(schema) {}
    /// A type of the language itself; name must outlive the handle.
    explicit TXMLType(std::string_view builtInName) : FBuiltInName(builtInName) {}

    /// False for no type at all.
    explicit operator bool() const { return FNode || !FBuiltInName.empty(); }
    /// An anonymous type gets a name that no declared type has.
    std::string GetName() const;
    bool IsComplex() const;
    bool IsBuiltIn() const { return !FBuiltInName.empty(); }
    /// Identity of a declared type; null for a built-in one.
    pugi::xml_node_struct* GetNode() const { return FNode; }
    /// Null for a built-in type.
    const TXMLSchema* GetSchema() const { return FSchema; }
    /// Values that a simple type allows, those of its bases, members and items included.
    std::vector<std::string_view> GetEnumerations() const;

    // ---- Of a complex type; empty for others. Inherited entries are included, and a
    // declaration of the type itself stands before the inherited one that it restricts.

    std::vector<TXMLDeclaration> GetElements() const;
    std::vector<TXMLDeclaration> GetAttributes() const;
    std::vector<TXMLAttributeGroup> GetAttributeGroups() const;

    friend bool operator==(const TXMLType&, const TXMLType&) = default;

private:
    pugi::xml_node_struct* FNode = nullptr;
    const TXMLSchema* FSchema = nullptr;
    std::string_view FBuiltInName;
};

/// An element or attribute where it is declared or referred to.
class TXMLDeclaration {
public:
    /// site: the node that stands in the content; target: the declaration that it means,
    /// null if that is nowhere.
    TXMLDeclaration(const TXMLSchema* schema, pugi::xml_node_struct* site, const TXMLSchema* targetSchema,
                    pugi::xml_node_struct* target)
        : FSite(site), FTarget(target), FSchema(schema), FTargetSchema(targetSchema) {}

    /// The name as a document writes it. An attribute of another namespace keeps the prefix
    /// that the schema writes, as in xml:lang.
    std::string_view GetName() const;
    /// Of an element: the namespace of its name. Empty if the target has none, and for a
    /// local element that documents write without one.
    std::string_view GetNamespace() const;
    bool HasRef() const;
    /// Of an attribute: use="required" where it stands.
    bool IsRequired() const;
    /// The fixed value, that of the declaration that is meant included; nothing if it has none.
    std::optional<std::string_view> GetFixed() const;
    bool HasType() const;
    /// The type that the schema gives to it, however it does so; none if that is nowhere.
    TXMLType GetDataType() const;
    const TXMLSchema& GetSchema() const { return *FSchema; }
    /// Identity of the declaration that is meant; the same for all references to it.
    const void* GetTarget() const { return FTarget; }

private:
    pugi::xml_node_struct* FSite;
    pugi::xml_node_struct* FTarget;
    const TXMLSchema* FSchema;
    const TXMLSchema* FTargetSchema;
};

class TXMLAttributeGroup {
public:
    TXMLAttributeGroup(const TXMLSchema* schema, pugi::xml_node_struct* node)
        : FNode(node), FSchema(schema) {}
    /// Its own attributes; groups inside it stand beside it in the type's list.
    std::vector<TXMLDeclaration> GetAttributes() const;

private:
    pugi::xml_node_struct* FNode;
    const TXMLSchema* FSchema;
};

/// An include, redefinition or import.
struct TXMLSchemaInclude {
    /// The name of the file that was read; the location as written if none was.
    std::string Location;
    const TXMLSchema* Schema = nullptr;  ///< null if it was not read
};

/// One schema document under one target namespace.
class TXMLSchema {
public:
    struct TData;
    explicit TXMLSchema(std::unique_ptr<TData> data);
    ~TXMLSchema();
    TXMLSchema(const TXMLSchema&) = delete;
    TXMLSchema& operator=(const TXMLSchema&) = delete;

    const std::string& GetFileName() const;
    /// Nothing if the schema has none. A schema without one takes that of an includer.
    std::optional<std::string_view> GetTargetNamespace() const;
    const std::vector<TXMLSchemaInclude>& GetIncludes() const;
    /// Named types. One that another schema redefines stands there only.
    std::vector<TXMLType> GetComplexTypes() const;
    std::vector<TXMLType> GetSimpleTypes() const;
    /// Global elements, abstract ones left out.
    std::vector<TXMLDeclaration> GetElements() const;

    TData& GetData() const { return *FData; }

private:
    std::vector<TXMLType> GetTypes(bool complex) const;
    std::unique_ptr<TData> FData;
};

/// Loads a schema with all that it includes and owns the result.
class TXMLSchemaLibrary {
public:
    /// Files, bytes and steps that one load may cost; what goes beyond ends in a message.
    static constexpr size_t MaxSchemas = 500;
    static constexpr size_t MaxBytes = size_t{64} << 20;
    static constexpr size_t MaxSteps = 4000000;
    /// Steps that one question about a type may cost once a load is over.
    static constexpr size_t MaxQuestionSteps = 100000;
    static constexpr size_t MaxMessages = 100;

    explicit TXMLSchemaLibrary(TXMLSchemaMessageEvent onMessage);
    ~TXMLSchemaLibrary();

    /// Reads a file once. Locations are followed inside folder only, or inside the file's
    /// own folder if the file lies elsewhere. Raises EXMLSchemaError if the file cannot be
    /// read, is malformed or is no schema; trouble in an included file is a message.
    const TXMLSchema& Load(const std::string& fileName, const std::string& folder);
    /// Whoever lives on with a library takes up new steps for each table that it makes of
    /// the schema, and out of those a few for each question; the first load has its own.
    void BeginUse();
    void BeginQuestion();
    /// Where messages go from now on; a null event drops them.
    void SetOnMessage(TXMLSchemaMessageEvent onMessage);

private:
    std::unique_ptr<TXMLSchemaSet> FSet;
};

}  // namespace caretwell
