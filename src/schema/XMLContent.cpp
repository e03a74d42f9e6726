#include "schema/XMLContent.h"

#include <algorithm>
#include <charconv>

#include "schema/XMLSchemaData.h"

namespace caretwell {
namespace {

using TData = TXMLSchema::TData;

constexpr size_t MaxParticles = 20'000;
constexpr int MaxNesting = 100;

uint32_t ReadCount(pugi::xml_node node, const char* attribute) {
    std::string_view text = TrimBlanks(AttributeText(node, attribute));
    if (text.empty()) return 1;
    if (text == "unbounded") return TXMLParticle::Unbounded;
    uint32_t count = 1;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    return error == std::errc::result_out_of_range ? TXMLParticle::Unbounded : count;
}

class TContentReader {
public:
    TXMLContent FContent;

    void ReadType(const TXMLType& type) {
        std::vector<TDerivation> descent = ReadDescent(type.GetSchema(), pugi::xml_node(type.GetNode()));
        if (descent.empty() || descent.front().IsSimple) return;
        // A restriction states the whole content again.
        auto last = std::ranges::find_if(descent, &TDerivation::IsRestriction);
        if (last != descent.end()) descent.erase(last + 1, descent.end());
        size_t all = Begin(TXMLParticleKind::Sequence, {});
        for (auto step = descent.rbegin(); step != descent.rend(); ++step)
            ReadParts(step->Schema, step->Content, 0);
        End(all);
    }

private:
    size_t Begin(TXMLParticleKind kind, pugi::xml_node node) {
        TXMLParticle& particle = FContent.Particles.emplace_back();
        particle.Kind = kind;
        if (node) {
            particle.Least = ReadCount(node, "minOccurs");
            particle.Most = std::max(ReadCount(node, "maxOccurs"), particle.Least);
        }
        return FContent.Particles.size() - 1;
    }
    void End(size_t index) {
        FContent.Particles[index].End = static_cast<uint32_t>(FContent.Particles.size());
    }

    void ReadParts(const TXMLSchema* schema, pugi::xml_node container, int depth) {
        const TData& data = schema->GetData();
        for (pugi::xml_node node : container.children()) {
            bool isTooLarge = FContent.Particles.size() >= MaxParticles || depth >= MaxNesting;
            if (isTooLarge || !data.Set->Spend()) {
                FContent.IsCoarse = true;
                return;
            }
            // A restriction takes a particle out by not letting it occur.
            TXMLKind kind = data.KindOf(node);
            if (kind == xkNone || ReadCount(node, "maxOccurs") == 0) continue;
            ReadParticle(schema, node, kind, depth);
        }
    }

    void ReadParticle(const TXMLSchema* schema, pugi::xml_node node, TXMLKind kind, int depth) {
        switch (kind) {
            case xkElement: ReadElement(schema, node); break;
            case xkAny: ReadWildcard(schema->GetData(), node); break;
            case xkGroup: ReadGroup(schema, node, depth); break;
            case xkSequence: ReadModel(TXMLParticleKind::Sequence, schema, node, depth); break;
            case xkChoice: ReadModel(TXMLParticleKind::Choice, schema, node, depth); break;
            case xkAll: ReadModel(TXMLParticleKind::All, schema, node, depth); break;
            default: break;
        }
    }

    void ReadModel(TXMLParticleKind kind, const TXMLSchema* schema, pugi::xml_node node, int depth) {
        size_t model = Begin(kind, node);
        ReadParts(schema, node, depth + 1);
        End(model);
    }

    void ReadGroup(const TXMLSchema* schema, pugi::xml_node reference, int depth) {
        std::string_view name = AttributeText(reference, "ref");
        const TXMLComponent* group =
            name.empty() ? nullptr : schema->GetData().Resolve(reference, name, xnGroup);
        auto isOpen = [this](const TXMLComponent& component) {
            return std::ranges::find(FGroups, component.Node.internal_object()) != FGroups.end();
        };
        // Inside a redefinition its own name means what it redefines.
        while (group && group->Original && isOpen(*group)) group = group->Original;
        if (!group || isOpen(*group)) {
            FContent.IsCoarse |= group != nullptr;
            return;
        }
        FGroups.push_back(group->Node.internal_object());
        size_t model = Begin(TXMLParticleKind::Sequence, reference);
        ReadParts(group->Schema, group->Node, depth + 1);
        End(model);
        FGroups.pop_back();
    }

    void AddElement(const TXMLDeclaration& element) {
        TXMLParticle& particle = FContent.Particles.emplace_back();
        particle.Kind = TXMLParticleKind::Element;
        particle.Element = element;
        particle.End = static_cast<uint32_t>(FContent.Particles.size());
    }

    void ReadElement(const TXMLSchema* schema, pugi::xml_node node) {
        const TData& data = schema->GetData();
        std::string_view name = AttributeText(node, "ref");
        size_t choice = Begin(TXMLParticleKind::Choice, node);
        if (name.empty()) {
            if (!AttributeText(node, "name").empty())
                AddElement({schema, node.internal_object(), schema, node.internal_object()});
        } else if (const TXMLComponent* target = data.Resolve(node, name, xnElement)) {
            AddWithMembers(schema, node, *target);
        }
        End(choice);
    }

    // The element, and all that may stand in its place.
    void AddWithMembers(const TXMLSchema* schema, pugi::xml_node site, const TXMLComponent& head) {
        TXMLSchemaSet& set = *schema->GetData().Set;
        std::vector<const TXMLComponent*> waiting{&head};
        std::unordered_set<const void*> met;
        while (!waiting.empty()) {
            const TXMLComponent& element = *waiting.back();
            waiting.pop_back();
            if (!met.insert(element.Node.internal_object()).second || !set.Spend()) continue;
            if (!element.Node.attribute("abstract").as_bool())
                AddElement({schema, site.internal_object(), element.Schema, element.Node.internal_object()});
            auto members = set.Members.find(element.Node.internal_object());
            if (members != set.Members.end())
                waiting.insert(waiting.end(), members->second.rbegin(), members->second.rend());
        }
    }

    void ReadWildcard(const TData& data, pugi::xml_node node) {
        size_t index = Begin(TXMLParticleKind::Wildcard, node);
        TXMLWildcard& wildcard = FContent.Particles[index].Wildcard;
        std::string_view words = AttributeText(node, "namespace");
        std::string_view target = data.TargetNamespace.value_or("");
        wildcard.IsAny = words.empty();
        for (std::string_view word = TakeWord(words); !word.empty(); word = TakeWord(words)) {
            if (word == "##any") wildcard.IsAny = true;
            else if (word == "##other") wildcard.IsOther = true;
            if (word == "##other" || word == "##targetNamespace") wildcard.Namespaces.push_back(target);
            // Names without a namespace are of no other one.
            if (word == "##other" || word == "##local") wildcard.Namespaces.push_back("");
            if (!word.starts_with("##")) wildcard.Namespaces.push_back(word);
        }
        End(index);
    }

    std::vector<const void*> FGroups;  // that are being read
};

}  // namespace

TXMLContent ReadContent(const TXMLType& type) {
    TContentReader reader;
    if (type.GetNode() && type.IsComplex()) reader.ReadType(type);
    return std::move(reader.FContent);
}

std::vector<TXMLDeclaration> ReadGlobals(const TXMLSchema& schema) {
    std::vector<TXMLDeclaration> globals;
    for (const auto& member : schema.GetData().Set->Schemas)
        for (const TXMLDeclaration& element : member->GetElements()) globals.push_back(element);
    return globals;
}

}  // namespace caretwell
