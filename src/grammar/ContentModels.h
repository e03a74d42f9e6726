// Content models as states: what an element holds so far is one number.
//
//     (dt+, dd+)     nothing yet: dt next        after dt: dt or dd        after dd: dd, or the end
//
// A model is an expression that is stored once however often it is written. Reading a child
// leaves what is still to come, an expression again (Antimirov's partial derivatives), so
// counts, "&" groups and ambiguous models need nothing of their own, and only the states are
// made that some document comes by. What would be too large to follow is given up: the model
// then has the state Loose, of which nothing more is known than its names.
#pragma once

#include <cstdint>
#include <deque>
#include <span>
#include <unordered_map>
#include <vector>

namespace caretwell {

/// Number of an element's name. One above FirstWildcard stands for many names.
using TName = uint32_t;
inline constexpr TName FirstWildcard = 0x8000'0000;
inline constexpr TName NoName = 0xFFFF'FFFF;
/// An expression.
using TTerm = uint32_t;
/// A set of expressions, one of which the rest of the content has to fit.
using TState = uint32_t;

class TContentModels {
public:
    static constexpr TTerm Nothing = 0;
    static constexpr TState Loose = 0xFFFF'FFFF;  ///< no state is known
    static constexpr TState NoState = 0xFFFF'FFFE;
    static constexpr uint32_t Unbounded = 0xFFFF'FFFF;
    // Counts beyond the first, groups beyond the second become coarser; models beyond the
    // others have no states.
    static constexpr uint32_t MaxCount = 200;
    static constexpr size_t MaxAll = 64;
    static constexpr uint32_t MaxDepth = 1'000;    ///< of parts in parts, a sequence counts its length
    static constexpr size_t MaxMoves = 2'000'000;  ///< of all models together
    static constexpr size_t MaxStates = 100'000;

    /// One child that may come next, and the state after it.
    struct TMove {
        TName Name;
        TState Target;
    };

    TContentModels();

    // ---- Expressions. Parts are terms of the same object.

    TTerm Element(TName name);
    TTerm Sequence(std::span<const TTerm> parts);
    TTerm Choice(std::span<const TTerm> parts);
    /// All parts, in any order, one after the other.
    TTerm All(std::span<const TTerm> parts);
    TTerm Repeat(TTerm part, uint32_t least, uint32_t most);
    /// The caller has made one coarser itself.
    void NoteCoarse() { FIsCoarse = true; }
    /// True if an expression was made coarser since the last call.
    bool TakeCoarse();

    // ---- States.

    TState StateOf(TTerm term);
    /// The children that may come next, by name, wildcards last. None for Loose.
    std::span<const TMove> GetMoves(TState state);
    /// The state after a child of that very name; NoState if it may not come, Loose if the
    /// model has grown too large.
    TState Step(TState state, TName name);
    /// The same where children that are required may be missing in between.
    TState Reach(TState state, TName name);
    /// True if nothing has to follow.
    bool IsComplete(TState state) const { return Missing(state) == 0; }
    /// Number of children that have to follow, at least.
    uint32_t Missing(TState state) const;

private:
    enum class TKind : uint8_t { Nothing, Element, Sequence, Choice, All, Repeat };
    struct TNode {
        TKind Kind = TKind::Nothing;
        bool IsNullable = true;
        bool HasForm = false;
        uint32_t Low = 0, High = 0;  // name, counts, or head and tail
        uint32_t First = 0, Count = 0;
        uint32_t Least = 0;  // children at least
        uint32_t Depth = 0;
        uint32_t Form = 0, FormEnd = 0;  // in FForms
    };
    /// A child that an expression may begin with, and what is left then.
    struct TForm {
        TName Name;
        TTerm Rest;
        friend bool operator==(const TForm&, const TForm&) = default;
        bool operator<(const TForm& other) const {
            return Name != other.Name ? Name < other.Name : Rest < other.Rest;
        }
    };
    struct TStateRow {
        std::vector<TTerm> Terms;
        std::vector<TMove> Moves;
        uint32_t Missing = 0;
        bool HasMoves = false;
    };

    TTerm Intern(TNode node, std::span<const TTerm> parts);
    TTerm Flatten(std::span<const TTerm> parts);
    std::span<const TTerm> PartsOf(const TNode& node) const {
        return {FParts.data() + node.First, node.Count};
    }
    bool IsSame(const TNode& a, const TNode& b, std::span<const TTerm> parts) const;
    TTerm Pair(TTerm head, TTerm tail);
    std::vector<TForm> MakeForm(TTerm term);
    void AddForm(std::vector<TForm>& form, TTerm term, TTerm tail);
    void AddRestOfAll(std::vector<TForm>& form, TTerm term);
    TState InternState(std::vector<TTerm> terms);
    bool Spend(size_t moves);

    std::vector<TNode> FNodes;
    std::vector<TTerm> FParts;
    std::unordered_multimap<uint64_t, TTerm> FTerms;
    std::vector<TForm> FForms;
    std::deque<TStateRow> FStates;
    std::unordered_multimap<uint64_t, TState> FStatesByHash;
    std::unordered_map<uint64_t, TState> FReached;
    size_t FMoves = 0;
    bool FIsCoarse = false;
};

}  // namespace caretwell
