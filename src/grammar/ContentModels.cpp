#include "grammar/ContentModels.h"

#include <algorithm>
#include <array>
#include <unordered_set>
#include <utility>

#include "markup/NameMap.h"

namespace caretwell {
namespace {

uint64_t Mix(uint64_t hash, uint64_t value) { return AddToTail(hash, value); }

uint64_t HashOf(std::span<const TTerm> terms, uint64_t hash) {
    for (TTerm term : terms) hash = Mix(hash, term);
    return hash;
}

uint32_t AddCounts(uint32_t a, uint32_t b) { return a > UINT32_MAX - b ? UINT32_MAX : a + b; }

}  // namespace

TContentModels::TContentModels() { Intern({}, {}); }

// ---- expressions

bool TContentModels::IsSame(const TNode& a, const TNode& b, std::span<const TTerm> parts) const {
    return a.Kind == b.Kind && a.Low == b.Low && a.High == b.High && std::ranges::equal(PartsOf(a), parts);
}

TTerm TContentModels::Intern(TNode node, std::span<const TTerm> parts) {
    uint64_t hash = HashOf(parts, Mix(Mix(static_cast<uint64_t>(node.Kind), node.Low), node.High));
    auto [from, to] = FTerms.equal_range(hash);
    for (auto row = from; row != to; ++row)
        if (IsSame(FNodes[row->second], node, parts)) return row->second;
    node.First = static_cast<uint32_t>(FParts.size());
    node.Count = static_cast<uint32_t>(parts.size());
    FParts.insert(FParts.end(), parts.begin(), parts.end());
    auto term = static_cast<TTerm>(FNodes.size());
    FNodes.push_back(node);
    FTerms.emplace(hash, term);
    return term;
}

/// The names alone, in any order and number.
TTerm TContentModels::Flatten(std::span<const TTerm> parts) {
    FIsCoarse = true;
    std::vector<TTerm> waiting(parts.begin(), parts.end()), elements;
    std::unordered_set<TTerm> seen;
    while (!waiting.empty()) {
        TTerm term = waiting.back();
        waiting.pop_back();
        if (!seen.insert(term).second) continue;
        const TNode& node = FNodes[term];
        if (node.Kind == TKind::Element) elements.push_back(term);
        else if (node.Kind == TKind::Sequence) waiting.insert(waiting.end(), {node.Low, node.High});
        else waiting.insert(waiting.end(), PartsOf(node).begin(), PartsOf(node).end());
    }
    return Repeat(Choice(elements), 0, Unbounded);
}

TTerm TContentModels::Element(TName name) {
    return Intern({.Kind = TKind::Element, .IsNullable = false, .Low = name, .Least = 1}, {});
}

TTerm TContentModels::Pair(TTerm head, TTerm tail) {
    if (head == Nothing) return tail;
    if (tail == Nothing) return head;
    TNode first = FNodes[head];
    // What is left of a long sequence stays a list, however often its head changes.
    if (first.Kind == TKind::Sequence) return Pair(first.Low, Pair(first.High, tail));
    const TNode& rest = FNodes[tail];
    uint32_t depth = std::max(first.Depth, rest.Depth) + 1;
    if (depth > MaxDepth) return Flatten(std::array{head, tail});
    return Intern({.Kind = TKind::Sequence,
                   .IsNullable = first.IsNullable && rest.IsNullable,
                   .Low = head,
                   .High = tail,
                   .Least = AddCounts(first.Least, rest.Least),
                   .Depth = depth},
                  {});
}

TTerm TContentModels::Sequence(std::span<const TTerm> parts) {
    if (parts.size() > MaxDepth) return Flatten(parts);
    TTerm result = Nothing;
    for (size_t i = parts.size(); i-- > 0;) result = Pair(parts[i], result);
    return result;
}

TTerm TContentModels::Choice(std::span<const TTerm> parts) {
    std::vector<TTerm> flat;
    for (TTerm part : parts) {
        const TNode& node = FNodes[part];
        if (node.Kind != TKind::Choice) flat.push_back(part);
        else flat.insert(flat.end(), PartsOf(node).begin(), PartsOf(node).end());
    }
    std::ranges::sort(flat);
    flat.erase(std::unique(flat.begin(), flat.end()), flat.end());
    if (flat.empty()) return Nothing;
    if (flat.size() == 1) return flat.front();
    TNode choice{.Kind = TKind::Choice, .IsNullable = false, .Least = UINT32_MAX};
    for (TTerm part : flat) {
        choice.IsNullable |= FNodes[part].IsNullable;
        choice.Least = std::min(choice.Least, FNodes[part].Least);
        choice.Depth = std::max(choice.Depth, FNodes[part].Depth + 1);
    }
    if (choice.Depth > MaxDepth) return Flatten(flat);
    return Intern(choice, flat);
}

TTerm TContentModels::All(std::span<const TTerm> parts) {
    std::vector<TTerm> sorted(parts.begin(), parts.end());
    std::erase(sorted, Nothing);
    std::ranges::sort(sorted);
    if (sorted.empty()) return Nothing;
    if (sorted.size() == 1) return sorted.front();
    if (sorted.size() > MaxAll) return Flatten(sorted);
    TNode all{.Kind = TKind::All};
    for (TTerm part : sorted) {
        all.IsNullable &= FNodes[part].IsNullable;
        all.Least = AddCounts(all.Least, FNodes[part].Least);
        all.Depth = std::max(all.Depth, FNodes[part].Depth + 1);
    }
    if (all.Depth > MaxDepth) return Flatten(sorted);
    return Intern(all, sorted);
}

TTerm TContentModels::Repeat(TTerm part, uint32_t least, uint32_t most) {
    if (part == Nothing || most == 0) return Nothing;
    FIsCoarse |= least > MaxCount || (most > MaxCount && most != Unbounded);
    least = std::min(least, MaxCount);
    if (most > MaxCount) most = Unbounded;
    const TNode& inner = FNodes[part];
    // What may be missing anyway need not be counted from below.
    if (inner.IsNullable) least = 0;
    if (least == 1 && most == 1) return part;
    bool isLoop = inner.Kind == TKind::Repeat && inner.Low <= 1 && inner.High == Unbounded;
    if (isLoop && least <= 1) return Repeat(PartsOf(inner).front(), least && inner.Low, Unbounded);
    if (inner.Depth == MaxDepth) return Flatten(std::span(&part, 1));
    uint64_t count = uint64_t{inner.Least} * least;
    return Intern({.Kind = TKind::Repeat,
                   .IsNullable = least == 0,
                   .Low = least,
                   .High = most,
                   .Least = static_cast<uint32_t>(std::min<uint64_t>(count, UINT32_MAX)),
                   .Depth = inner.Depth + 1},
                  std::span(&part, 1));
}

bool TContentModels::TakeCoarse() { return std::exchange(FIsCoarse, false); }

// ---- what an expression may begin with

void TContentModels::AddForm(std::vector<TForm>& form, TTerm term, TTerm tail) {
    if (!FNodes[term].HasForm) {
        std::vector<TForm> made = MakeForm(term);
        std::sort(made.begin(), made.end());
        made.erase(std::unique(made.begin(), made.end()), made.end());
        TNode& node = FNodes[term];
        node.HasForm = true;
        node.Form = static_cast<uint32_t>(FForms.size());
        if (Spend(made.size())) FForms.insert(FForms.end(), made.begin(), made.end());
        node.FormEnd = static_cast<uint32_t>(FForms.size());
    }
    const TNode node = FNodes[term];
    for (uint32_t i = node.Form; i < node.FormEnd; ++i)
        form.push_back({FForms[i].Name, Pair(FForms[i].Rest, tail)});
}

std::vector<TContentModels::TForm> TContentModels::MakeForm(TTerm term) {
    std::vector<TForm> form;
    const TNode node = FNodes[term];
    switch (node.Kind) {
        case TKind::Nothing: break;
        case TKind::Element: form.push_back({node.Low, Nothing}); break;
        case TKind::Sequence:
            AddForm(form, node.Low, node.High);
            if (FNodes[node.Low].IsNullable) AddForm(form, node.High, Nothing);
            break;
        case TKind::Choice:
            for (uint32_t i = 0; i < node.Count; ++i) AddForm(form, FParts[node.First + i], Nothing);
            break;
        case TKind::All: AddRestOfAll(form, term); break;
        case TKind::Repeat: {
            TTerm part = FParts[node.First];
            uint32_t most = node.High == Unbounded ? Unbounded : node.High - 1;
            AddForm(form, part, Repeat(part, node.Low ? node.Low - 1 : 0, most));
            break;
        }
    }
    return form;
}

void TContentModels::AddRestOfAll(std::vector<TForm>& form, TTerm term) {
    std::vector<TTerm> parts(PartsOf(FNodes[term]).begin(), PartsOf(FNodes[term]).end());
    for (size_t i = 0; i < parts.size(); ++i) {
        std::vector<TTerm> others = parts;
        others.erase(others.begin() + static_cast<ptrdiff_t>(i));
        AddForm(form, parts[i], All(others));
    }
}

bool TContentModels::Spend(size_t moves) {
    FMoves += moves;
    return FMoves <= MaxMoves;
}

// ---- states

TState TContentModels::StateOf(TTerm term) { return InternState({term}); }

TState TContentModels::InternState(std::vector<TTerm> terms) {
    uint64_t hash = HashOf(terms, 0);
    auto [from, to] = FStatesByHash.equal_range(hash);
    for (auto row = from; row != to; ++row)
        if (FStates[row->second].Terms == terms) return row->second;
    if (FStates.size() >= MaxStates || !Spend(terms.size())) return Loose;
    auto state = static_cast<TState>(FStates.size());
    TStateRow& row = FStates.emplace_back();
    row.Missing = UINT32_MAX;
    for (TTerm term : terms)
        row.Missing = std::min(row.Missing, FNodes[term].IsNullable ? 0 : FNodes[term].Least);
    row.Terms = std::move(terms);
    FStatesByHash.emplace(hash, state);
    return state;
}

std::span<const TContentModels::TMove> TContentModels::GetMoves(TState state) {
    if (state >= FStates.size()) return {};
    if (FStates[state].HasMoves) return FStates[state].Moves;
    std::vector<TForm> form;
    for (TTerm term : FStates[state].Terms) AddForm(form, term, Nothing);
    std::sort(form.begin(), form.end());
    form.erase(std::unique(form.begin(), form.end()), form.end());
    std::vector<TMove> moves;
    for (size_t i = 0; i < form.size();) {
        TName name = form[i].Name;
        std::vector<TTerm> rest;
        for (; i < form.size() && form[i].Name == name; ++i) rest.push_back(form[i].Rest);
        moves.push_back({name, InternState(std::move(rest))});
    }
    Spend(moves.size());
    FStates[state].HasMoves = true;
    FStates[state].Moves = std::move(moves);
    return FStates[state].Moves;
}

TState TContentModels::Step(TState state, TName name) {
    if (state >= FStates.size()) return Loose;
    std::span<const TMove> moves = GetMoves(state);
    auto found = std::ranges::lower_bound(moves, name, {}, &TMove::Name);
    if (found != moves.end() && found->Name == name) return found->Target;
    return FMoves > MaxMoves ? Loose : NoState;
}

TState TContentModels::Reach(TState state, TName name) {
    constexpr size_t MostVisited = 64;
    uint64_t key = uint64_t{state} << 32 | name;
    if (auto known = FReached.find(key); known != FReached.end()) return known->second;
    std::vector<TState> visited{state};
    TState result = NoState;
    for (size_t i = 0; i < visited.size() && result == NoState; ++i) {
        result = Step(visited[i], name);
        if (result != NoState) break;
        for (const TMove& move : GetMoves(visited[i])) {
            if (visited.size() == MostVisited) break;
            if (move.Target != Loose && std::ranges::find(visited, move.Target) == visited.end())
                visited.push_back(move.Target);
        }
    }
    if (FReached.size() < MaxStates) FReached.emplace(key, result);
    return result;
}

uint32_t TContentModels::Missing(TState state) const {
    return state < FStates.size() ? FStates[state].Missing : 0;
}

}  // namespace caretwell
