#include "grammar/Walk.h"

#include <algorithm>

#include "markup/Text.h"

namespace caretwell {
namespace {

// Moves looked at for the tags left out before one tag, and in a whole walk: a schema may let
// everything be left out everywhere.
constexpr uint32_t MostMovesOfTag = 20'000, MostMoves = 4'000'000;
constexpr TState NoState = TContentModels::NoState;
constexpr TState Loose = TContentModels::Loose;

}  // namespace

void TWalk::Begin(const TTagLog& log, bool isXML, TName context) {
    if (FIsXML != isXML) ForgetNames();
    FIsXML = isXML;
    FHasLastOpened = FIsSpent = false;
    FMovesLeft = MostMoves;
    Resolve(log);
    FOpen.clear();
    std::ranges::fill(FTops, -1);
    FOpen.push_back({.Element = RootElement, .State = FGrammar.Get(RootElement).Start, .Key = UINT32_MAX});
    if (context != NoName) Push(context, KeyOfImplied(context), 0, {.IsImplied = true});
}

void TWalk::Read(const TTagLog& log, size_t from, size_t to) {
    for (size_t i = from; i < to; ++i) {
        const TTagLog::TRow& row = log.GetRows()[i];
        switch (row.Kind) {
            case TTagLog::TKind::Opening: Open(row.Name, row.Offset); break;
            case TTagLog::TKind::Closing: Close(row.Name); break;
            case TTagLog::TKind::Empty:
                if (FHasLastOpened) CloseTo(FOpen.size() - 1);
                FHasLastOpened = false;
                break;
        }
    }
}

// ---- names

void TWalk::Resolve(const TTagLog& log) {
    if (FNaming != log.GetNaming() || FLog != &log) ForgetNames();
    FNaming = log.GetNaming();
    FLog = &log;
    for (size_t i = FMeanings.size(); i < log.GetNameCount(); ++i)
        FMeanings.push_back({NoName, KeyOfText(log.GetName(static_cast<uint32_t>(i))), 0});
}

void TWalk::ForgetNames() {
    FMeanings.clear();
    FTexts.clear();
    FKeys.clear();
    FImpliedKeys.clear();
    FTops.clear();
}

// A schema may come to know a name while its declarations are compiled.
const TWalk::TMeaning& TWalk::MeaningOf(uint32_t number) {
    TMeaning& meaning = FMeanings[number];
    if (meaning.Name == NoName && meaning.NamesThen != FGrammar.GetNameCount()) {
        meaning.Name = FGrammar.FindName(FLog->GetName(number));
        meaning.NamesThen = static_cast<uint32_t>(FGrammar.GetNameCount());
    }
    return meaning;
}

uint32_t TWalk::KeyOfText(const std::string& text) {
    std::string folded = text;
    if (!FIsXML) std::ranges::transform(folded, folded.begin(), ToLower<char>);
    auto [row, isNew] = FKeys.try_emplace(std::move(folded), static_cast<uint32_t>(FTexts.size()));
    if (!isNew) return row->second;
    FTexts.push_back(text);
    FTops.push_back(-1);
    return row->second;
}

uint32_t TWalk::KeyOfImplied(TName name) {
    auto [row, isNew] = FImpliedKeys.try_emplace(name);
    if (isNew) row->second = KeyOfText(FGrammar.GetText(name));
    return row->second;
}

std::string TWalk::GetText(const TOpenElement& element) const {
    if (element.Element == UnknownElement) return FTexts[element.Key];
    return FGrammar.GetText(FGrammar.Get(element.Element).Name);
}

// ---- what fits where

bool TWalk::MayHold(const TOpenElement& holder, TName name) {
    if (FPlaces.GetExceptions(holder.Exceptions).Excluded.Has(name)) return false;
    const TNameSet* limit = FPlaces.GetLimit(holder.Limit);
    return !limit || limit->Has(name) ||
           (holder.Element != UnknownElement && FGrammar.Get(holder.Element).Own.Has(name));
}

TState TWalk::StepIn(const TOpenElement& holder, TState state, TName name) {
    TContentModels& models = FGrammar.Models();
    const TExceptions& exceptions = FPlaces.GetExceptions(holder.Exceptions);
    for (const TLikeness& likeness : exceptions.Likenesses) {
        if (likeness.Name != name || exceptions.Excluded.Has(name) || !MayHold(holder, likeness.Like))
            continue;
        if (TState next = models.Step(state, likeness.Like); next != NoState) return next;
    }
    bool isIncluded = exceptions.Included.Has(name) && !exceptions.Excluded.Has(name);
    if (!MayHold(holder, name)) return isIncluded ? state : NoState;
    if (state == Loose) {
        bool isHeld = holder.Element == UnknownElement || FGrammar.Get(holder.Element).Alphabet.Has(name);
        return isHeld || isIncluded ? Loose : NoState;
    }
    TState next = models.Step(state, name);
    if (next != NoState) return next;
    std::span<const TContentModels::TMove> moves = models.GetMoves(state);
    for (size_t i = moves.size(); i-- > 0 && moves[i].Name >= FirstWildcard;)
        if (FGrammar.IsMatch(moves[i].Name, name)) return moves[i].Target;
    return isIncluded ? state : NoState;
}

// The moves of an answer that is known count again, so that no walk depends on those before it.
TWalk::TInference TWalk::Infer(const TOpenElement& holder, TName name) {
    uint64_t key = uint64_t{holder.State} << 32 | name;
    // Exceptions may forbid what the models allow, and then the answer is of this place alone.
    bool isKept = holder.Exceptions == 0 && holder.Limit == NoLimit;
    uint32_t allowed = std::min(MostMovesOfTag, FMovesLeft);
    auto known = isKept ? FInferred.find(key) : FInferred.end();
    TInference result;
    if (known != FInferred.end()) {
        result = known->second;
    } else {
        uint32_t left = allowed;
        for (int depth = 1; depth <= MostLeftOut && result.State == NoState; ++depth)
            result = InferWithin(holder, holder.State, name, depth, left);
        result.Moves = allowed - left;
        bool isWhole = allowed == MostMovesOfTag;
        if (isKept && isWhole && FInferred.size() < TContentModels::MaxStates) FInferred.emplace(key, result);
    }
    FIsSpent |= result.Moves >= allowed;
    if (result.Moves > allowed) result = {.Moves = allowed};
    FMovesLeft -= result.Moves;
    return result;
}

// An element whose opening tag is left out may hold the name; or it is left out whole, and the
// name comes after it.
TWalk::TInference TWalk::InferWithin(const TOpenElement& holder, TState state, TName name, int depth,
                                     uint32_t& left) {
    std::span<const TContentModels::TMove> moves = FGrammar.Models().GetMoves(state);
    std::vector<TContentModels::TMove> omissible;
    for (const auto& move : moves) {
        if (left == 0) return {};
        --left;
        TElementId child =
            move.Name < FirstWildcard ? FGrammar.FindChild(holder.Element, move.Name) : UnknownElement;
        if (child != UnknownElement && FGrammar.Get(child).MayOmitStart && MayHold(holder, move.Name))
            omissible.push_back(move);
    }
    for (const auto& move : omissible) {
        TElementId child = FGrammar.FindChild(holder.Element, move.Name);
        TOpenElement inner = MakeOpen(holder, child);
        if (StepIn(inner, inner.State, name) != NoState) return {state, move.Name};
        if (depth > 1 && InferWithin(inner, inner.State, name, depth - 1, left).State != NoState)
            return {state, move.Name};
    }
    for (const auto& move : omissible) {
        const TElementModel& model = FGrammar.Get(FGrammar.FindChild(holder.Element, move.Name));
        if (!model.MayOmitEnd || move.Target == state || move.Target == Loose) continue;
        if (StepIn(holder, move.Target, name) != NoState) return {move.Target, NoName};
        if (depth <= 1) continue;
        TInference later = InferWithin(holder, move.Target, name, depth - 1, left);
        if (later.State != NoState) return later;
    }
    return {};
}

// ---- opening tags

void TWalk::Open(uint32_t number, int32_t offset) {
    const TMeaning meaning = MeaningOf(number);
    FHasLastOpened = false;
    for (TName name = meaning.Name; name != NoName; name = FGrammar.NextAlike(name))
        if (Place(name, meaning.Key, offset)) return;
    if (!FIsXML && meaning.Name != NoName && PlaceAtSibling(meaning.Name, meaning.Key, offset)) return;
    PlaceAnyhow(meaning.Name, meaning.Key, offset);
}

bool TWalk::Place(TName name, uint32_t key, int32_t offset) {
    size_t last = FOpen.size() > MostEnded ? FOpen.size() - MostEnded : 0;
    for (size_t level = FOpen.size(); level-- > last;) {
        if (FOpen[level].IsGone) continue;
        if (PlaceIn(level, name, key, offset)) return true;
        if (FIsXML || !MayEnd(FOpen[level])) return false;
    }
    return false;
}

bool TWalk::PlaceIn(size_t level, TName name, uint32_t key, int32_t offset) {
    TState next = StepIn(FOpen[level], FOpen[level].State, name);
    if (next == NoState && (FIsXML || FOpen[level].Element == UnknownElement)) return false;
    if (next == NoState) {
        TInference left = Infer(FOpen[level], name);
        if (left.State == NoState) return false;
        CloseTo(level + 1);
        FOpen[level].State = left.State;
        if (left.Opens != NoName) {
            FOpen[level].State = StepIn(FOpen[level], left.State, left.Opens);
            Push(left.Opens, KeyOfImplied(left.Opens), offset, {.IsImplied = true});
            return PlaceIn(FOpen.size() - 1, name, key, offset);
        }
        next = StepIn(FOpen[level], left.State, name);
    }
    CloseTo(level + 1);
    FOpen[level].State = next;
    Push(name, key, offset, {});
    return true;
}

// In HTML a further item ends the one before, also where a tag inside that was never closed:
// <li><b>x <li>.
bool TWalk::PlaceAtSibling(TName name, uint32_t key, int32_t offset) {
    int32_t sibling = FTops[key];
    if (sibling <= 0) return false;
    auto level = static_cast<size_t>(sibling);
    if (FOpen[level].IsMisplaced || !MayEnd(FOpen[level])) return false;
    do --level;
    while (FOpen[level].IsGone);
    return PlaceIn(level, name, key, offset);
}

// What fits nowhere stands where it stands. If it comes too early the model goes on after it.
void TWalk::PlaceAnyhow(TName name, uint32_t key, int32_t offset) {
    TOpenElement& top = FOpen.back();
    TState next = NoState;
    if (name != NoName && top.State != Loose && MayHold(top, name))
        next = FGrammar.Models().Reach(top.State, name);
    if (name == NoName) next = StepOverUnknown(top.State);
    if (next != NoState) top.State = next;
    bool isHeld = next != NoState || top.Element == UnknownElement;
    if (!isHeld && name == NoName) isHeld = FGrammar.Get(top.Element).HoldsAny;
    Push(name, key, offset, {.IsMisplaced = !isHeld});
}

// A wildcard may let in what no schema at hand declares.
TState TWalk::StepOverUnknown(TState state) {
    std::span<const TContentModels::TMove> moves = FGrammar.Models().GetMoves(state);
    bool hasWildcard = !moves.empty() && moves.back().Name >= FirstWildcard;
    return hasWildcard && FGrammar.IsMatch(moves.back().Name, NoName) ? moves.back().Target : NoState;
}

TOpenElement TWalk::MakeOpen(const TOpenElement& holder, TElementId element) {
    TOpenElement open{.Element = element, .Exceptions = holder.Exceptions};
    bool isTransparent = element == UnknownElement;
    if (element != UnknownElement) {
        const TElementModel& model = FGrammar.Get(element);
        open.State = model.Start;
        open.Exceptions = FPlaces.Enter(holder.Exceptions, element);
        isTransparent = model.IsTransparent;
    }
    if (isTransparent) open.Limit = FPlaces.Limit(holder.Limit, holder.Element);
    return open;
}

void TWalk::Push(TName name, uint32_t key, int32_t offset, TManner manner) {
    TElementId element = name == NoName ? UnknownElement : FGrammar.FindChild(FOpen.back().Element, name);
    FHasLastOpened = element == UnknownElement || FIsXML || !FGrammar.Get(element).IsEmpty;
    if (!FHasLastOpened) return;
    TOpenElement open = MakeOpen(FOpen.back(), element);
    open.Key = key;
    open.Offset = offset;
    open.IsImplied = manner.IsImplied;
    open.IsMisplaced = manner.IsMisplaced;
    open.Outer = FTops[key];
    FTops[key] = static_cast<int32_t>(FOpen.size());
    FOpen.push_back(open);
}

bool TWalk::MayEnd(const TOpenElement& element) {
    return element.Element != UnknownElement && FGrammar.Get(element.Element).MayOmitEnd;
}

// ---- closing tags

void TWalk::Close(uint32_t number) {
    FHasLastOpened = false;
    int32_t level = FTops[FMeanings[number].Key];
    if (level < 0) return;
    auto target = static_cast<size_t>(level);
    // An element that does not belong into the one that is closed outlives it: <b><div></b>.
    bool staysInside = false;
    size_t last = FOpen.size() > MostEnded ? FOpen.size() - MostEnded : 0;
    for (size_t i = FOpen.size(); !FIsXML && !staysInside && i-- > std::max(target + 1, last);)
        staysInside = FOpen[i].IsMisplaced && !FOpen[i].IsGone && FOpen[i].Element != UnknownElement &&
                      !MayEnd(FOpen[i]);
    if (!staysInside) return CloseTo(target);
    FOpen[target].IsGone = true;
    FTops[FOpen[target].Key] = FOpen[target].Outer;
}

void TWalk::CloseTo(size_t count) {
    while (FOpen.size() > count) Pop();
    while (FOpen.back().IsGone) Pop();
}

void TWalk::Pop() {
    const TOpenElement& open = FOpen.back();
    if (!open.IsGone) FTops[open.Key] = open.Outer;
    FOpen.pop_back();
}

}  // namespace caretwell
