// From types, references and units to the flat list of values of each property.
#include <utility>
#include <vector>

#include "stylesheet/CSSEditors.h"
#include "stylesheet/CSSSchemaLoader.h"

namespace caretwell {
namespace {

// Entries that references may add in all. A schema of a thousand properties adds some
// twenty thousand; a chain of types that was made to square its own size ends here.
constexpr int64_t MostTakenOver = 500'000;

}  // namespace

bool TCSSReader::Spend(int64_t count) {
    FSpent += count;
    return FSpent <= MostTakenOver;
}

void TCSSReader::Resolve() {
    FTypeValues.clear();
    for (const auto& type : FTable.FTypes) ResolveType(*type);
    // By index: a property that is resolved makes values, never properties.
    for (const auto& property : FTable.FProperties) ResolveProp(*property);
    AddEditors();
}

// The mark is set before the descent, so a ring of references ends, and each type gets
// what the other had by then. An own stack: a chain of types may be of any length.
void TCSSReader::ResolveType(TCSSType& first) {
    if (first.FResolved) return;
    first.FResolved = true;
    std::vector<std::pair<TCSSType*, int32_t>> open{{&first, 0}};
    while (!open.empty()) {
        auto& [type, index] = open.back();
        if (index == type->FRefs.FCount) {
            open.pop_back();
            continue;
        }
        TCSSType* ref = FTable.LookupType(type->FRefs.GetItem(index));
        if (ref && !ref->FResolved) {
            ref->FResolved = true;
            open.emplace_back(ref, 0);  // and come back to the same reference
            continue;
        }
        ++index;
        if (!ref || ref == type || !Spend(ref->FValues.FCount)) continue;
        for (int32_t i = 0; i < ref->FValues.FCount; ++i) type->FValues.Add(ref->FValues.GetItem(i));
        type->FHasFonts = type->FHasFonts || ref->FHasFonts;
    }
}

// Takes over each type of the property and, for the dialogs of types that it names,
// each direct reference of the type. A type that has no editor may have the name of a
// property: then the values of that property are taken over too, once they are known.
void TCSSReader::ResolveProp(TCSSProperty& first) {
    struct TStep {
        TCSSProperty* Property;
        size_t Type = 0;
        int32_t Ref = -1;       // -1: the type itself
        bool HasNames = false;  // the type's own values are taken already
    };
    if (first.FResolved) return;
    first.FResolved = true;
    std::vector<TStep> open{{&first}};
    while (!open.empty()) {
        TStep& step = open.back();
        if (step.Type == step.Property->FTypes.size()) {
            open.pop_back();
            continue;
        }
        TCSSType& type = *step.Property->FTypes[step.Type];
        TCSSType* taken = step.Ref < 0 ? &type : FTable.LookupType(type.FRefs.GetItem(step.Ref));
        TCSSProperty* other = nullptr;
        if (taken) {
            if (!std::exchange(step.HasNames, true)) TakeNames(*step.Property, *taken);
            if (taken->FEditable) TakeEditor(*step.Property, *taken);
            else other = FTable.LookupProperty(type.FName);
        }
        if (other && !other->FResolved) {
            other->FResolved = true;
            open.push_back({other});
            continue;
        }
        if (other) TakeValues(*step.Property, *other);
        step.HasNames = false;
        if (++step.Ref < type.FRefs.FCount) continue;
        step.Ref = -1;
        ++step.Type;
    }
}

void TCSSReader::TakeNames(TCSSProperty& property, TCSSType& type) {
    property.FHasFonts = property.FHasFonts || type.FHasFonts;
    if (!Spend(type.FValues.FCount)) return;
    const std::vector<TCSSValue*>& values = ValuesOf(type);
    for (TCSSValue* value : values) value->FKind = cssVkName;
    property.AddValues(values);
}

// All references have been followed when the first property asks.
const std::vector<TCSSValue*>& TCSSReader::ValuesOf(const TCSSType& type) {
    auto [entry, isNew] = FTypeValues.try_emplace(&type);
    for (int32_t i = 0; isNew && i < type.FValues.FCount; ++i)
        entry->second.Add(FTable.NewValue(type.FValues.GetItem(i)));
    return entry->second.Items();
}

void TCSSReader::TakeEditor(TCSSProperty& property, const TCSSType& type) {
    TCSSValue* value = FTable.NewValue(type.FName);
    value->FKind = cssVkType;
    property.AddValue(value);
}

void TCSSReader::TakeValues(TCSSProperty& property, TCSSProperty& other) {
    property.FHasFonts = property.FHasFonts || other.FHasFonts;
    if (&property == &other || !Spend(static_cast<int64_t>(other.FValues.size()))) return;
    property.AddValues(other.FValues.Items());
}

void TCSSReader::AddEditors() {
    auto addUnits = [this](std::unique_ptr<TCSSUnitEditor> editor, std::string_view typeName) {
        if (const TCSSType* type = FTable.LookupType(typeName))
            for (int32_t i = 0; i < type->FIntrinsics.FCount; ++i)
                editor->GetUnitList().Add(type->FIntrinsics.GetItem(i));
        FTable.AddEditor(std::move(editor));
    };
    FTable.AddEditor(std::make_unique<TCSSColorEditor>());
    FTable.AddEditor(std::make_unique<TCSSURIEditor>());
    addUnits(std::make_unique<TCSSAngleEditor>(), "angle");
    addUnits(std::make_unique<TCSSLengthEditor>(), "length");
    auto percentage = std::make_unique<TCSSPercentageEditor>();
    percentage->GetUnitList().Add("%");
    FTable.AddEditor(std::move(percentage));
    addUnits(std::make_unique<TCSSTimeEditor>(), "time");
    addUnits(std::make_unique<TCSSFrequencyEditor>(), "frequency");
    FTable.AddEditor(std::make_unique<TCSSFamilyNameEditor>());
}

}  // namespace caretwell
