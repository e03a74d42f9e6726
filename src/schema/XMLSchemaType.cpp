// What a type holds: content models, attributes and enumerations, seen flat.
#include <algorithm>

#include "schema/XMLSchemaData.h"

namespace caretwell {
namespace {

using TData = TXMLSchema::TData;

struct TPlace {
    const TXMLSchema* Schema = nullptr;
    pugi::xml_node Node;
};

TDerivation ReadDerivation(const TXMLSchema* schema, pugi::xml_node type) {
    const TData& data = schema->GetData();
    pugi::xml_node content = data.FindChild(type, xkComplexContent);
    pugi::xml_node simple = content ? pugi::xml_node() : data.FindChild(type, xkSimpleContent);
    pugi::xml_node outer = content ? content : simple;
    if (pugi::xml_node node = data.FindChild(outer, xkExtension))
        return {schema, node, false, !simple.empty()};
    if (pugi::xml_node node = data.FindChild(outer, xkRestriction))
        return {schema, node, true, !simple.empty()};
    return {schema, outer ? outer : type, false, !simple.empty()};
}

// Where the base of a type stands; nothing if there is none or a built-in one. The base
// of a redefinition that names itself is what it redefines.
TPlace FindBase(const TXMLSchema* schema, pugi::xml_node type, pugi::xml_node content) {
    const TData& data = schema->GetData();
    std::string_view name = AttributeText(content, "base");
    if (name.empty()) return {};
    const TXMLComponent* base = data.Resolve(content, name, xnType);
    if (base && base->Node == type) base = base->Original;
    if (base) return {base->Schema, base->Node};
    data.ResolveType(content, name);  // reports a name that is unknown
    return {};
}

}  // namespace

std::vector<TDerivation> ReadDescent(const TXMLSchema* schema, pugi::xml_node type) {
    std::vector<TDerivation> descent;
    std::unordered_set<const void*> seen;
    TPlace place{schema, type};
    while (place.Node && place.Schema->GetData().KindOf(place.Node) == xkComplexType) {
        const TData& data = place.Schema->GetData();
        if (!seen.insert(place.Node.internal_object()).second) {
            data.Report(place.Node, xsWarning,
                        "Type " + std::string(AttributeText(place.Node, "name")) + " is derived from itself");
            break;
        }
        if (!data.Set->Spend()) break;
        descent.push_back(ReadDerivation(place.Schema, place.Node));
        place = FindBase(place.Schema, place.Node, descent.back().Content);
    }
    return descent;
}

namespace {

/// The groups, of one kind, that a walk has met and those it stands in.
class TGroupsMet {
public:
    struct TWords {
        TXMLSpace Space;
        const char* Unknown;
        const char* Ring;
    };
    explicit TGroupsMet(const TWords& words) : FWords(words) {}

    /// The group that a reference means, for the walk to read; null, with a message where
    /// one is due, if it is unknown or was read before.
    const TXMLComponent* Enter(const TXMLSchema* schema, pugi::xml_node reference) {
        const TData& data = schema->GetData();
        std::string name(AttributeText(reference, "ref"));
        if (name.empty()) return nullptr;
        const TXMLComponent* group = data.Resolve(reference, name, FWords.Space);
        if (!group) {
            data.Report(reference, xsWarning, FWords.Unknown + name);
            return nullptr;
        }
        // Inside a redefinition its own name means what it redefines.
        while (group->Original && FIsOpen.contains(group->Node.internal_object())) group = group->Original;
        auto [row, isNew] = FIsOpen.try_emplace(group->Node.internal_object(), true);
        if (isNew) return group;
        if (row->second) data.Report(reference, xsWarning, FWords.Ring + name + " contains itself");
        return nullptr;
    }
    void Leave(pugi::xml_node group) { FIsOpen[group.internal_object()] = false; }

private:
    TWords FWords;
    std::unordered_map<const void*, bool> FIsOpen;
};

/// A node whose children a walk is reading.
struct TCursor {
    const TXMLSchema* Schema;
    pugi::xml_node Next;
    pugi::xml_node Group;  ///< the group that ends with it, or null
};

/// Collects the elements of content models in document order, with a stack of its own.
class TElementWalk {
public:
    std::vector<TXMLDeclaration> FElements;

    void Read(const TXMLSchema* schema, pugi::xml_node container) {
        FPath.push_back({schema, container.first_child(), {}});
        while (!FPath.empty()) {
            TCursor& cursor = FPath.back();
            pugi::xml_node node = cursor.Next;
            if (!node) {
                if (cursor.Group) FGroups.Leave(cursor.Group);
                FPath.pop_back();
                continue;
            }
            cursor.Next = node.next_sibling();
            if (!cursor.Schema->GetData().Set->Spend()) return;
            ReadParticle(cursor.Schema, node);
        }
    }

private:
    void ReadParticle(const TXMLSchema* schema, pugi::xml_node node) {
        TXMLKind kind = schema->GetData().KindOf(node);
        bool isParticle =
            kind == xkElement || kind == xkGroup || kind == xkSequence || kind == xkChoice || kind == xkAll;
        // A restriction takes a particle out by not letting it occur.
        if (!isParticle || AttributeText(node, "maxOccurs") == "0") return;
        if (kind == xkElement) AddElement(schema, node);
        else if (kind == xkGroup) EnterGroup(FGroups.Enter(schema, node));
        else FPath.push_back({schema, node.first_child(), {}});
    }

    void EnterGroup(const TXMLComponent* group) {
        if (group) FPath.push_back({group->Schema, group->Node.first_child(), group->Node});
    }

    void AddElement(const TXMLSchema* schema, pugi::xml_node node) {
        const TData& data = schema->GetData();
        std::string_view name = AttributeText(node, "ref");
        if (name.empty()) {
            if (!AttributeText(node, "name").empty())
                FElements.emplace_back(schema, node.internal_object(), schema, node.internal_object());
            return;
        }
        const TXMLComponent* target = data.Resolve(node, name, xnElement);
        if (!target) return data.Report(node, xsWarning, "Unknown reference to element " + std::string(name));
        AddWithMembers(schema, node, *target);
    }

    // The element, and all that may stand in its place.
    void AddWithMembers(const TXMLSchema* schema, pugi::xml_node site, const TXMLComponent& head) {
        std::vector<const TXMLComponent*> waiting{&head};
        while (!waiting.empty()) {
            const TXMLComponent& element = *waiting.back();
            waiting.pop_back();
            const void* id = element.Node.internal_object();
            if (!FReferred.insert(id).second) continue;
            if (!element.Node.attribute("abstract").as_bool())
                FElements.emplace_back(schema, site.internal_object(), element.Schema,
                                       element.Node.internal_object());
            TXMLSchemaSet& set = *schema->GetData().Set;
            auto members = set.Members.find(id);
            if (members == set.Members.end() || !set.Spend()) continue;
            waiting.insert(waiting.end(), members->second.rbegin(), members->second.rend());
        }
    }

    std::vector<TCursor> FPath;
    TGroupsMet FGroups{{xnGroup, "Unknown reference to group ", "Group "}};
    std::unordered_set<const void*> FReferred;  // global elements met
};

/// Collects attributes and attribute groups of a line of descent.
class TAttributeWalk {
public:
    std::vector<TXMLDeclaration> FAttributes;
    std::vector<TXMLAttributeGroup> FGroups;

    TAttributeWalk(const TXMLSchema* schema, pugi::xml_node type) {
        for (const TDerivation& step : ReadDescent(schema, type)) ReadContent(step.Schema, step.Content);
        if (FHasProhibited) DissolveGroups();
    }

private:
    void ReadContent(const TXMLSchema* schema, pugi::xml_node content) {
        const TData& data = schema->GetData();
        for (pugi::xml_node node : content.children()) {
            if (!data.Set->Spend()) return;
            TXMLKind kind = data.KindOf(node);
            if (kind == xkAttribute) AddAttribute(MakeAttribute(schema, node), node);
            else if (kind == xkAttributeGroup) ReadGroups(schema, node);
        }
    }

    // The declaration nearest to the type counts, be it to say that there is none.
    void AddAttribute(TXMLDeclaration declaration, pugi::xml_node node) {
        if (!FNames.insert(declaration.GetName()).second) return;
        if (AttributeText(node, "use") == "prohibited") FHasProhibited = true;
        else FAttributes.push_back(declaration);
    }

    // A reference to a group, the references inside that group, and so on.
    void ReadGroups(const TXMLSchema* schema, pugi::xml_node reference) {
        std::vector<TCursor> path;
        EnterGroup(path, FGroupsMet.Enter(schema, reference));
        while (!path.empty()) {
            TCursor& cursor = path.back();
            pugi::xml_node node = cursor.Next;
            if (!node) {
                FGroupsMet.Leave(cursor.Group);
                path.pop_back();
                continue;
            }
            cursor.Next = node.next_sibling();
            const TData& data = cursor.Schema->GetData();
            if (!data.Set->Spend()) return;
            if (data.KindOf(node) == xkAttributeGroup)
                EnterGroup(path, FGroupsMet.Enter(cursor.Schema, node));
        }
    }

    void EnterGroup(std::vector<TCursor>& path, const TXMLComponent* group) {
        if (!group) return;
        FGroups.emplace_back(group->Schema, group->Node.internal_object());
        path.push_back({group->Schema, group->Node.first_child(), group->Node});
    }

    // A group does not know what the type prohibits, so the type lists what is left.
    void DissolveGroups() {
        for (const TXMLAttributeGroup& group : FGroups)
            for (const TXMLDeclaration& attribute : group.GetAttributes())
                if (FNames.insert(attribute.GetName()).second) FAttributes.push_back(attribute);
        FGroups.clear();
    }

    std::unordered_set<std::string_view> FNames;
    TGroupsMet FGroupsMet{{xnAttributeGroup, "Couldn't find attribute group ", "Attribute group "}};
    bool FHasProhibited = false;
};

/// Collects the values of a simple type, its bases, members and items.
class TEnumerationWalk {
public:
    std::vector<std::string_view> FValues;

    TEnumerationWalk(const TXMLSchema* schema, pugi::xml_node type) {
        FWaiting.push_back({schema, type});
        while (!FWaiting.empty()) {
            TPlace place = FWaiting.back();
            FWaiting.pop_back();
            if (!place.Schema->GetData().Set->Spend()) return;
            if (FSeen.insert(place.Node.internal_object()).second) ReadType(place);
        }
    }

private:
    void ReadType(const TPlace& type) {
        const TData& data = type.Schema->GetData();
        for (pugi::xml_node node : type.Node.children()) {
            TXMLKind kind = data.KindOf(node);
            if (kind == xkRestriction && ReadValues(data, node)) continue;
            if (kind == xkRestriction) Follow(type, node, "base");
            else if (kind == xkList) Follow(type, node, "itemType");
            else if (kind == xkUnion) Follow(type, node, "memberTypes");
        }
    }

    // A restriction with values of its own does not let in the others of its base.
    bool ReadValues(const TData& data, pugi::xml_node restriction) {
        size_t before = FValues.size();
        for (pugi::xml_node node : restriction.children())
            if (data.KindOf(node) == xkEnumeration && data.Set->Spend())
                FValues.push_back(node.attribute("value").value());
        return FValues.size() > before;
    }

    void Follow(const TPlace& type, pugi::xml_node node, const char* attribute) {
        const TData& data = type.Schema->GetData();
        for (pugi::xml_node child : node.children())
            if (data.KindOf(child) == xkSimpleType) FWaiting.push_back({type.Schema, child});
        std::string_view names = AttributeText(node, attribute);
        for (std::string_view name = TakeWord(names); !name.empty(); name = TakeWord(names)) {
            const TXMLComponent* found = data.Resolve(node, name, xnType);
            if (found && found->Node == type.Node) found = found->Original;
            if (found) {
                FWaiting.push_back({found->Schema, found->Node});
                continue;
            }
            // Of a type of the language the two words of a boolean; an unknown name is reported.
            TXMLType builtIn = data.ResolveType(node, name);
            if (!builtIn.IsBuiltIn()) continue;
            auto values = builtIn.GetEnumerations();
            FValues.insert(FValues.end(), values.begin(), values.end());
        }
    }

    std::vector<TPlace> FWaiting;
    std::unordered_set<const void*> FSeen;
};

}  // namespace

std::string TXMLType::GetName() const {
    if (IsBuiltIn()) return std::string(FBuiltInName);
    if (!FNode) return {};
    pugi::xml_node node(FNode);
    std::string_view name = AttributeText(node, "name");
    if (!name.empty()) return std::string(name);
    std::string place(1, '#');
    place += std::to_string(FSchema->GetData().Index);
    place += '.';
    return place += std::to_string(node.offset_debug());
}

bool TXMLType::IsComplex() const {
    if (IsBuiltIn()) return FBuiltInName == "anyType";
    return FNode && FSchema->GetData().KindOf(pugi::xml_node(FNode)) == xkComplexType;
}

std::vector<std::string_view> TXMLType::GetEnumerations() const {
    if (FBuiltInName == "boolean") return {"false", "true"};
    if (!FNode || IsComplex()) return {};
    return std::move(TEnumerationWalk(FSchema, pugi::xml_node(FNode)).FValues);
}

std::vector<TXMLDeclaration> TXMLType::GetElements() const {
    if (!FNode || !IsComplex()) return {};
    std::vector<TDerivation> descent = ReadDescent(FSchema, pugi::xml_node(FNode));
    // A restriction states the whole content again, so its bases say nothing more.
    auto last = std::find_if(descent.begin(), descent.end(),
                             [](const TDerivation& step) { return step.IsRestriction; });
    if (last != descent.end()) descent.erase(last + 1, descent.end());
    TElementWalk walk;
    if (descent.empty() || descent.front().IsSimple) return {};
    for (auto step = descent.rbegin(); step != descent.rend(); ++step) walk.Read(step->Schema, step->Content);
    return std::move(walk.FElements);
}

std::vector<TXMLDeclaration> TXMLType::GetAttributes() const {
    if (!FNode || !IsComplex()) return {};
    return std::move(TAttributeWalk(FSchema, pugi::xml_node(FNode)).FAttributes);
}

std::vector<TXMLAttributeGroup> TXMLType::GetAttributeGroups() const {
    if (!FNode || !IsComplex()) return {};
    return std::move(TAttributeWalk(FSchema, pugi::xml_node(FNode)).FGroups);
}

}  // namespace caretwell
