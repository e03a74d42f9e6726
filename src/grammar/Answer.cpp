#include "grammar/Answer.h"

#include <algorithm>
#include <unordered_set>

#include "markup/Text.h"

namespace caretwell {
namespace {

constexpr TState NoState = TContentModels::NoState;
constexpr TState Loose = TContentModels::Loose;

class TAnswering {
public:
    TAnswering(TWalk& walk, const TTagLog& log, size_t after)
        : FWalk(walk), FGrammar(walk.GetGrammar()), FTop(walk.GetOpen().back()) {
        ReadFollowing(log, after);
    }

    TGrammarAnswer Make() {
        FAnswer.IsExact = !FWalk.IsSpent();
        AddOpenLevels();
        AddRequired();
        AddSorted(FAnswer.Now, FNow);
        AddElsewhere();
        AddClosable();
        return std::move(FAnswer);
    }

private:
    static constexpr int MostLeftOut = TWalk::MostLeftOut;
    static constexpr size_t MostEnded = TWalk::MostEnded;
    static constexpr size_t MostFollowing = 16;
    static constexpr uint32_t MostMoves = 500'000;

    bool IsComplete(const TOpenElement& open) const {
        return open.State == Loose || FGrammar.Models().IsComplete(open.State);
    }

    // ---- what may start

    // Elements that may end without a tag let in what may come after them.
    void AddOpenLevels() {
        const std::vector<TOpenElement>& open = FWalk.GetOpen();
        size_t last = open.size() > MostEnded ? open.size() - MostEnded : 0;
        for (size_t level = open.size(); level-- > last;) {
            if (open[level].IsGone) continue;
            FSeen.clear();  // exceptions differ from level to level
            AddState(open[level], 0);
            if (FWalk.IsXML() || !FWalk.MayEnd(open[level]) || !IsComplete(open[level])) return;
        }
    }

    void AddState(const TOpenElement& holder, int leftOut) {
        if (!FSeen.insert(uint64_t{holder.Element} << 32 | holder.State).second) return;
        bool isKnown = holder.Element != UnknownElement;
        FAnswer.IsExact &= isKnown && holder.State != Loose && FGrammar.Get(holder.Element).IsExact;
        if (!isKnown) return AddAll(holder);
        if (holder.State == Loose)
            FGrammar.Get(holder.Element).Alphabet.ForEach([&](TName name) { Add(holder, name); });
        AddExceptions(holder);
        for (const TContentModels::TMove& move : FGrammar.Models().GetMoves(holder.State)) {
            if (FMovesLeft == 0) {
                FAnswer.IsExact = false;
                return;
            }
            --FMovesLeft;
            if (move.Name >= FirstWildcard) {
                FGrammar.GetMatches(move.Name).ForEach([&](TName name) { Add(holder, name); });
            } else if (FWalk.MayHold(holder, move.Name)) {
                FNow.Add(move.Name);
                if (!FWalk.IsXML() && leftOut < MostLeftOut) AddLeftOut(holder, move, leftOut + 1);
            }
        }
    }

    void AddLeftOut(const TOpenElement& holder, const TContentModels::TMove& move, int leftOut) {
        TElementId child = FGrammar.FindChild(holder.Element, move.Name);
        if (child == UnknownElement || !FGrammar.Get(child).MayOmitStart) return;
        TOpenElement inner = FWalk.MakeOpen(holder, child);
        AddState(inner, leftOut);
        if (!FWalk.MayEnd(inner) || !IsComplete(inner) || move.Target == Loose) return;
        TOpenElement later = holder;
        later.State = move.Target;
        AddState(later, leftOut);
    }

    void AddExceptions(const TOpenElement& holder) {
        const TExceptions& exceptions = FWalk.GetPlaces().GetExceptions(holder.Exceptions);
        // Nothing is included where nothing is held.
        if (!FGrammar.Get(holder.Element).IsEmpty)
            exceptions.Included.ForEach([&](TName name) {
                if (!exceptions.Excluded.Has(name)) FNow.Add(name);
            });
        for (const TLikeness& likeness : exceptions.Likenesses)
            if (FWalk.StepIn(holder, holder.State, likeness.Name) != NoState) FNow.Add(likeness.Name);
    }

    // In an unknown element stands what may stand around it.
    void AddAll(const TOpenElement& holder) {
        for (TName name = 0; name < FGrammar.GetNameCount(); ++name) Add(holder, name);
    }

    void Add(const TOpenElement& holder, TName name) {
        if (FWalk.MayHold(holder, name)) FNow.Add(name);
    }

    // ---- what is needed, and what else there is

    void AddRequired() {
        TContentModels& models = FGrammar.Models();
        uint32_t missing = models.Missing(FTop.State);
        TNameSet required;
        for (const TContentModels::TMove& move : models.GetMoves(FTop.State))
            if (move.Name < FirstWildcard && models.Missing(move.Target) < missing && FNow.Has(move.Name))
                required.Add(move.Name);
        AddSorted(FAnswer.Required, required);
        FRequired = std::move(required);
    }

    void AddElsewhere() {
        if (FTop.Element == UnknownElement) return;
        TNameSet names;
        FGrammar.Get(FTop.Element).Alphabet.ForEach([&](TName name) {
            if (!FNow.Has(name) && FWalk.MayHold(FTop, name)) names.Add(name);
        });
        AddSorted(FAnswer.Elsewhere, names);
    }

    // The children that follow the caret in its element. Where tags are left out they may be of
    // an element further out, and then say nothing.
    void ReadFollowing(const TTagLog& log, size_t after) {
        int depth = 0;
        const auto& rows = log.GetRows();
        for (size_t i = after; i < rows.size() && FFollowing.size() < MostFollowing && depth >= 0; ++i) {
            if (rows[i].Kind == TTagLog::TKind::Closing) --depth;
            if (rows[i].Kind == TTagLog::TKind::Empty && i > after && rows[i].Offset == rows[i - 1].Offset)
                --depth;
            if (rows[i].Kind != TTagLog::TKind::Opening) continue;
            TName name = FWalk.NameOf(rows[i].Name);
            if (depth == 0) FFollowing.push_back(name);
            TElementId element = name == NoName ? UnknownElement : FGrammar.FindChild(FTop.Element, name);
            bool isEmpty = element != UnknownElement && FGrammar.Get(element).IsEmpty && !FWalk.IsXML();
            bool isWritten = i + 1 < rows.size() && rows[i + 1].Kind == TTagLog::TKind::Empty;
            if (!isEmpty || isWritten) ++depth;
        }
    }

    bool FitsBefore(TState state) {
        for (TName name : FFollowing) {
            if (name == NoName) break;
            state = FWalk.StepIn(FTop, state, name);
            if (state == NoState) return false;
        }
        return true;
    }

    int RankOf(TName name, bool isFollowed) {
        if (FRequired.Has(name)) return 0;
        if (!isFollowed) return 1;
        TState next = FWalk.StepIn(FTop, FTop.State, name);
        return next == NoState || FitsBefore(next) ? 1 : 2;
    }

    void AddSorted(std::vector<std::string>& list, const TNameSet& names) {
        struct TRow {
            int Rank;
            std::string Text;
        };
        std::vector<TRow> rows;
        bool isFollowed = !FFollowing.empty() && FTop.State != Loose && FitsBefore(FTop.State);
        names.ForEach([&](TName name) {
            rows.push_back({RankOf(name, isFollowed), FGrammar.GetText(name)});
        });
        std::ranges::sort(rows, [](const TRow& a, const TRow& b) {
            int order = a.Rank - b.Rank;
            if (order == 0) order = CompareText(std::string_view(a.Text), std::string_view(b.Text));
            return order < 0 || (order == 0 && a.Text < b.Text);
        });
        for (TRow& row : rows)
            if (list.empty() || list.back() != row.Text) list.push_back(std::move(row.Text));
    }

    // ---- what may end

    void AddClosable() {
        const std::vector<TOpenElement>& open = FWalk.GetOpen();
        std::unordered_set<uint32_t> keys;  // a closing tag means the innermost of its name
        for (size_t level = open.size(); level-- > 1;) {
            if (open[level].IsGone) continue;
            if (!IsComplete(open[level])) return;
            if (keys.insert(open[level].Key).second)
                FAnswer.Closable.push_back({FWalk.GetText(open[level]), open[level].Offset});
            if (FWalk.IsXML() || !FWalk.MayEnd(open[level])) return;
        }
    }

    TWalk& FWalk;
    TGrammar& FGrammar;
    const TOpenElement& FTop;
    TGrammarAnswer FAnswer;
    TNameSet FNow, FRequired;
    std::unordered_set<uint64_t> FSeen;
    uint32_t FMovesLeft = MostMoves;
    std::vector<TName> FFollowing;
};

}  // namespace

TGrammarAnswer Answer(TWalk& walk, const TTagLog& log, size_t after) {
    return TAnswering(walk, log, after).Make();
}

}  // namespace caretwell
