#include "symbols/XSDLoader.h"

#include <algorithm>
#include <deque>

#include "host/Nibapi.h"
#include "host/Settings.h"
#include "symbols/MLSymbolManager.h"
#include "symbols/SchemaReaderCache.h"
#include "symbols/XSDPlan.h"

namespace caretwell {
namespace {

// Elements of a built-in type such as xs:string are left out unless the user wants them.
bool KeepsSimpleTyped() {
    auto value = ReadSetting(InsightSettings, "Simple Typed Elements");
    return value && SameText(std::string_view(*value), std::string_view("True"));
}

/// Plans of the schemas used last, so that going from one document to another and back
/// reads nothing. A plan holds the documents of its schema, so there are few.
class TPlanCache {
public:
    static constexpr size_t MaxPlans = 8;

    std::shared_ptr<TXSDPlan> Find(const std::string& fileName, bool keepsSimpleTyped) {
        auto found = std::find_if(FRows.begin(), FRows.end(), [&](const TRow& row) {
            return row.KeepsSimpleTyped == keepsSimpleTyped && row.Plan->FileName == fileName;
        });
        if (found == FRows.end()) return nullptr;
        std::rotate(FRows.begin(), found, found + 1);
        return FRows.front().Plan;
    }
    void Add(std::shared_ptr<TXSDPlan> plan, bool keepsSimpleTyped) {
        FRows.push_front({keepsSimpleTyped, std::move(plan)});
        if (FRows.size() > MaxPlans) FRows.pop_back();
    }
    void Clear() { FRows.clear(); }

private:
    struct TRow {
        bool KeepsSimpleTyped;
        std::shared_ptr<TXSDPlan> Plan;
    };
    std::deque<TRow> FRows;  // the one used last in front
};

TPlanCache& Plans() {
    static TPlanCache plans;
    return plans;
}

}  // namespace

void FreeXSDPlans() {
    std::scoped_lock lock(SchemaReaderLock());
    Plans().Clear();
}

/// A tag, the one that holds it, and what is left of its content.
struct TXSDLoader::TFrame {
    int32_t Tag;
    int32_t Parent;
    std::vector<TXMLDeclaration> Elements;
    size_t Next = 0;
};

TXSDLoader::TXSDLoader(TMLSymbolManager& manager)
    : FSymbolManager(manager), FKeepsSimpleTyped(KeepsSimpleTyped()) {}
TXSDLoader::~TXSDLoader() = default;

void TXSDLoader::Load(const std::string& fileName, THTMLTag& root,
                      const std::vector<std::u16string>* parents) {
    GetPlan(fileName)->MakeTags(FSymbolManager, root, parents);
}

std::shared_ptr<TXSDPlan> TXSDLoader::GetPlan(const std::string& fileName) {
    std::scoped_lock lock(SchemaReaderLock());
    std::shared_ptr<TXSDPlan> plan = Plans().Find(fileName, FKeepsSimpleTyped);
    if (plan) return plan;
    plan = MakePlan(fileName);
    Plans().Add(plan, FKeepsSimpleTyped);
    return plan;
}

std::shared_ptr<TXSDPlan> TXSDLoader::MakePlan(const std::string& fileName) {
    FPlan = std::make_shared<TXSDPlan>();
    FPlan->FileName = fileName;
    TXSDPlan::TMessages messages(*FPlan, FSymbolManager);
    FPlan->Schema = &FPlan->Library.Load(fileName, GetPlatform().SchemaFolder());
    LoadSchema(*FPlan->Schema);
    for (const TXMLSchema* schema : FSchemas)
        for (const TXMLDeclaration& element : schema->GetElements()) AddElementDef(element);
    return FPlan;
}

// As deep as files include each other, and a library reads a limited number of them.
void TXSDLoader::LoadSchema(const TXMLSchema& schema) {
    if (!FVisited.insert(&schema).second) return;
    for (const TXMLSchemaInclude& include : schema.GetIncludes())
        if (include.Schema) LoadSchema(*include.Schema);
    FSchemas.push_back(&schema);
}

// Types hold elements whose types hold elements; the frames stand in for that recursion.
void TXSDLoader::AddElementDef(const TXMLDeclaration& element) {
    std::vector<TFrame> frames;
    int32_t global = EnterElement(element, frames);
    while (!frames.empty()) {
        TFrame& frame = frames.back();
        int32_t tag = frame.Tag, joins = frame.Parent;
        if (frame.Next < frame.Elements.size()) {
            size_t depth = frames.size();
            int32_t child = EnterElement(TXMLDeclaration(frame.Elements[frame.Next++]), frames);
            // A child joins its parent once its own content is there.
            if (frames.size() > depth) {
                frames.back().Parent = tag;
                continue;
            }
            joins = tag;
            tag = child;
        } else {
            frames.pop_back();
        }
        AddChild(joins, tag);
    }
    if (global != NoTag) FPlan->Globals.push_back(global);
}

int32_t TXSDLoader::EnterElement(const TXMLDeclaration& element, std::vector<TFrame>& frames) {
    // One file may be a schema of several namespaces.
    auto [met, isNew] =
        FMet[element.HasRef()].try_emplace({element.GetTarget(), &element.GetSchema()}, NoTag);
    if (!isNew) return met->second;
    if (element.GetName().empty()) return NoTag;
    TXMLType type = GetElementType(element);
    return met->second = type ? FindOrPlanTag(element, type, frames) : NoTag;
}

TXMLType TXSDLoader::GetElementType(const TXMLDeclaration& element) const {
    TXMLType type = element.GetDataType();
    bool isNamed = element.HasType() && !element.HasRef();
    return isNamed && type.IsBuiltIn() && !FKeepsSimpleTyped ? TXMLType() : type;
}

int32_t TXSDLoader::FindOrPlanTag(const TXMLDeclaration& element, const TXMLType& type,
                                  std::vector<TFrame>& frames) {
    std::string key("E:");
    key.append(element.GetName()).append(type.IsComplex() ? "-C:" : "-S:").append(type.GetName());
    // A document may write the same name with a prefix and without one.
    size_t nameSpace = NumberNamespace(element.GetNamespace());
    key.append("-N:").append(std::to_string(nameSpace));
    if (auto found = FElements.find(key); found != FElements.end()) return found->second;
    int32_t tag = PlanTag(key, element.GetName(), nameSpace);
    if (tag == NoTag || !type.IsComplex()) return tag;
    FPlan->Tags.back().Type = type;
    // The key stands before the content is read, so a type that contains itself ends.
    frames.push_back({tag, NoTag, type.GetElements()});
    return tag;
}

size_t TXSDLoader::NumberNamespace(std::string_view nameSpace) {
    if (nameSpace.empty()) return 0;
    auto [row, isNew] = FNamespaces.try_emplace(nameSpace, FPlan->Namespaces.size());
    if (isNew) FPlan->Namespaces.emplace_back(nameSpace);
    return row->second;
}

int32_t TXSDLoader::PlanTag(const std::string& key, std::string_view name, size_t nameSpace) {
    std::u16string spelled = ToUtf16(name), folded = spelled;
    if (!FLimits.AdmitTag()) {
        ReportFull();
        return NoTag;
    }
    auto tag = static_cast<int32_t>(FPlan->Tags.size());
    FElements[key] = tag;
    std::transform(folded.begin(), folded.end(), folded.begin(), ToUpper<char16_t>);
    bool isFirst = FNames.insert(std::move(folded)).second;
    FPlan->Tags.push_back({std::move(spelled), {}, isFirst, nameSpace, {}});
    return tag;
}

void TXSDLoader::AddChild(int32_t parent, int32_t child) {
    if (parent == NoTag || child == NoTag) return;
    if (!FLimits.AdmitChild()) return ReportFull();
    FPlan->Tags[static_cast<size_t>(parent)].Children.push_back(child);
}

void TXSDLoader::ReportFull() {
    if (std::exchange(FIsFull, true)) return;
    FSymbolManager.Error(FPlan->FileName, "The schema declares too many elements; not all of them are used",
                         "Error", 0, 0);
}

void TMLSymbolManager::LoadXSDEx(THTMLTag& root, const std::vector<std::u16string>* parents,
                                 const std::string& fileName) {
    TXSDLoader(*this).Load(fileName, root, parents);
}

}  // namespace caretwell
