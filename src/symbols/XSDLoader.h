// Turns the schema of a free XML document into tags, through the object model.
//
//     <order><^    with order.xsd mapped to the document:   item   note
//
// A schema is worked out once into a plan, which says what tags there are and which
// holds which; a reload of the table only makes the tags of the plan again. One loader
// serves the making of one plan. Attributes are worked out when somebody first asks a
// tag for them, so the documents of a schema stay alive with its plan.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "schema/XMLSchema.h"
#include "symbols/TagLimits.h"
#include "tagmodel/HTMLTag.h"

namespace caretwell {

class TMLSymbolManager;
struct TXSDPlan;

class TXSDLoader final {
public:
    explicit TXSDLoader(TMLSymbolManager& manager);
    ~TXSDLoader();

    /// Global elements become children of root, and of each parent that the table has
    /// (null for none). Raises EXMLSchemaError if the schema cannot be loaded at all.
    void Load(const std::string& fileName, THTMLTag& root, const std::vector<std::u16string>* parents);

    /// What a file says, worked out once. Raises EXMLSchemaError as Load does.
    std::shared_ptr<TXSDPlan> GetPlan(const std::string& fileName);

private:
    struct TFrame;
    static constexpr int32_t NoTag = -1;

    std::shared_ptr<TXSDPlan> MakePlan(const std::string& fileName);
    void LoadSchema(const TXMLSchema& schema);
    void AddElementDef(const TXMLDeclaration& element);
    // The tag of an element, NoTag if the element is dropped. A frame is added if its
    // content is still to be read.
    int32_t EnterElement(const TXMLDeclaration& element, std::vector<TFrame>& frames);
    int32_t FindOrPlanTag(const TXMLDeclaration& element, const TXMLType& type, std::vector<TFrame>& frames);
    int32_t PlanTag(const std::string& key, std::string_view name, size_t nameSpace);
    size_t NumberNamespace(std::string_view nameSpace);
    void AddChild(int32_t parent, int32_t child);
    void ReportFull();
    TXMLType GetElementType(const TXMLDeclaration& element) const;

    TMLSymbolManager& FSymbolManager;
    std::shared_ptr<TXSDPlan> FPlan;
    std::unordered_set<const TXMLSchema*> FVisited;
    std::vector<const TXMLSchema*> FSchemas;  // the included ones before the including ones
    std::unordered_map<std::string, int32_t> FElements;
    std::unordered_set<std::u16string> FNames;  // in upper case
    std::unordered_map<std::string_view, size_t> FNamespaces;
    TTagLimits FLimits;
    // The tag of a declaration met before, by whether it was referred to.
    std::map<std::pair<const void*, const TXMLSchema*>, int32_t> FMet[2];
    bool FKeepsSimpleTyped = false;
    bool FIsFull = false;
};

/// Frees the plans that are kept for later reloads. Tags that were made stay usable.
void FreeXSDPlans();

}  // namespace caretwell
