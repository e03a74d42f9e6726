// Turns the schema of a free XML document into tags, through the object model.
//
//     <order><^    with order.xsd mapped to the document:   item   note
//
// One loader serves one load. What the tags of that load still need afterwards, the
// documents of the schema, stays alive with them, because attributes are worked out
// when somebody first asks a tag for them.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "schema/XMLSchema.h"
#include "tagmodel/HTMLTag.h"

namespace caretwell {

class TMLSymbolManager;

class TXSDLoader final {
public:
    /// Tags that one schema may make; declarations beyond them are dropped with a message.
    static constexpr size_t MaxTags = 50000;

    explicit TXSDLoader(TMLSymbolManager& manager);
    ~TXSDLoader();

    /// Global elements become children of root, and of each parent that the table has
    /// (null for none). Raises EXMLSchemaError if the schema cannot be loaded at all.
    void Load(const std::string& fileName, THTMLTag& root, const std::vector<std::u16string>* parents);

    static std::string ResolveLocation(const std::string& base, const std::string& location);

private:
    struct TSource;  // what the tags share
    struct TFrame;   // a tag whose content is being read
    struct TPlaces {
        THTMLTag* Root;
        const std::vector<std::u16string>* Parents;
    };

    void LoadSchema(const TXMLSchema& schema, const std::string& fileName, const TPlaces& places,
                    std::unordered_set<std::string>& visited);
    void RegisterType(const TXMLType& type);
    void AddElementDef(const TXMLDeclaration& element, const TPlaces& places);
    // The tag of an element; a frame is added if its content is still to be read. Null if
    // the element is dropped.
    THTMLTag* EnterElement(const TXMLDeclaration& element, std::vector<TFrame>& frames);
    THTMLTag* FindOrMakeTag(const TXMLDeclaration& element, const TXMLType& type,
                            std::vector<TFrame>& frames);
    THTMLTag* MakeTag(const std::string& key, std::string_view name);
    TXMLType GetElementType(const TXMLDeclaration& element) const;
    void Report(std::string_view fileName, std::string_view text, std::string_view prefix, int32_t line);

    TMLSymbolManager& FSymbolManager;
    std::shared_ptr<TSource> FSource;
    std::unordered_map<std::string, TRef<THTMLTag>> FElements;
    // The tag of a declaration met before, by whether it was referred to.
    std::unordered_map<const void*, THTMLTag*> FMet[2];
    std::string FFileName;
    bool FKeepsSimpleTyped = false;
    bool FIsFull = false;
};

}  // namespace caretwell
