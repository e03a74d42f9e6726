#include "grammar/Places.h"

namespace caretwell {

TPlaces::TPlaces(TGrammar& grammar) : FGrammar(grammar) {
    FExceptions.emplace_back();
    FLimits.emplace_back();
}

TExceptionsId TPlaces::Enter(TExceptionsId outer, TElementId element) {
    const TElementModel& model = FGrammar.Get(element);
    if (!model.HasExceptions) return outer;
    auto [row, isNew] = FEntered.try_emplace(Key(outer, element), outer);
    if (!isNew || FExceptions.size() >= MaxKept) return row->second;
    TExceptions inner = FExceptions[outer];
    inner.Excluded.AddAll(model.Exclusions);
    inner.Included.AddAll(model.Inclusions);
    for (const TLikeness& likeness : model.Likenesses) {
        bool isKnown = false;
        for (const TLikeness& known : inner.Likenesses)
            isKnown |= known.Name == likeness.Name && known.Like == likeness.Like;
        if (!isKnown) inner.Likenesses.push_back(likeness);
    }
    if (inner == FExceptions[outer]) return outer;
    row->second = static_cast<TExceptionsId>(FExceptions.size());
    FExceptions.push_back(std::move(inner));
    return row->second;
}

TLimitId TPlaces::Limit(TLimitId ofHolder, TElementId holder) {
    if (holder == UnknownElement || holder == RootElement) return ofHolder;
    auto [row, isNew] = FLimited.try_emplace(Key(ofHolder, holder), ofHolder);
    if (!isNew || FLimits.size() >= MaxKept) return row->second;
    const TElementModel& model = FGrammar.Get(holder);
    TNameSet names = model.Alphabet;
    if (model.IsTransparent && ofHolder != NoLimit) names.KeepAll(FLimits[ofHolder]);
    row->second = static_cast<TLimitId>(FLimits.size());
    FLimits.push_back(std::move(names));
    return row->second;
}

}  // namespace caretwell
