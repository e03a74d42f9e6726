// The elements open at a caret, each with the state of its content, out of the tags before it.
//
//     <table><caption>x</caption><tr><td>^
//         table (after caption, tbody), tbody (left out, after tr), tr (after td), td (nothing yet)
//
// Tags that are left out are inferred as SGML has it: an opening tag that cannot stand here
// closes what may be closed, or opens what may be opened. Nothing is an error: a tag that fits
// nowhere stands where it stands, and what was around it goes on as if it were not there.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "grammar/Places.h"
#include "parser/TagLog.h"

namespace caretwell {

/// One open element: what a document of any size costs for each level of nesting.
struct TOpenElement {
    TElementId Element = UnknownElement;
    TState State = TContentModels::Loose;
    uint32_t Key = 0;    ///< of the name, known or not
    int32_t Outer = -1;  ///< the next open element of the same key
    int32_t Offset = 0;  ///< of the tag's "<", or of the tag that made it open
    TExceptionsId Exceptions = 0;
    TLimitId Limit = NoLimit;
    bool IsImplied = false;    ///< its tag is left out
    bool IsMisplaced = false;  ///< the element around it does not hold it
    bool IsGone = false;       ///< closed, while elements inside it stay
};

class TWalk {
public:
    static constexpr int MostLeftOut = 4;     ///< opening tags before one tag
    static constexpr size_t MostEnded = 100;  ///< elements that one tag ends or passes over

    explicit TWalk(TGrammar& grammar) : FGrammar(grammar), FPlaces(grammar) {}

    /// Starts at the top of a document, in the element `context` if that is no NoName.
    /// In XML no tag is inferred.
    void Begin(const TTagLog& log, bool isXML, TName context);
    /// Takes the rows [from, to) of the log that it began with.
    void Read(const TTagLog& log, size_t from, size_t to);

    /// The grammar writes or finds names otherwise from now on.
    void ForgetNames();

    TGrammar& GetGrammar() const { return FGrammar; }
    TPlaces& GetPlaces() { return FPlaces; }
    /// Outermost first; the first is the document itself. Those that are gone count for nothing.
    const std::vector<TOpenElement>& GetOpen() const { return FOpen; }
    bool IsXML() const { return FIsXML; }
    /// Somewhere before the caret too many tags might have been left out to look at all of them.
    bool IsSpent() const { return FIsSpent; }
    /// How the name of an open element is written.
    std::string GetText(const TOpenElement& element) const;
    /// What the number of a name in the log means; NoName if the schema has no such element.
    TName NameOf(uint32_t number) { return MeaningOf(number).Name; }
    /// False if the place forbids the name, whatever the model says.
    bool MayHold(const TOpenElement& holder, TName name);
    /// The state that a child of the name leads to from a state of the holder; NoState if it
    /// may not come.
    TState StepIn(const TOpenElement& holder, TState state, TName name);
    /// The element as it is when it has just begun in the holder.
    TOpenElement MakeOpen(const TOpenElement& holder, TElementId element);
    /// Its closing tag may be left out.
    bool MayEnd(const TOpenElement& element);

private:
    /// What is left out before a tag: the holder's state then, and an element to be opened.
    struct TInference {
        TState State = TContentModels::NoState;
        TName Opens = NoName;
        uint32_t Moves = 0;  ///< that were looked at for it
    };
    struct TManner {
        bool IsMisplaced = false;
        bool IsImplied = false;
    };
    /// What a name of the log means, and the key that all spellings of the name share.
    struct TMeaning {
        TName Name;
        uint32_t Key;
        uint32_t NamesThen;  ///< names that the grammar had when it was looked up
    };

    void Resolve(const TTagLog& log);
    const TMeaning& MeaningOf(uint32_t number);
    uint32_t KeyOfText(const std::string& text);
    uint32_t KeyOfImplied(TName name);
    void Open(uint32_t number, int32_t offset);
    bool Place(TName name, uint32_t key, int32_t offset);
    bool PlaceIn(size_t level, TName name, uint32_t key, int32_t offset);
    bool PlaceAtSibling(TName name, uint32_t key, int32_t offset);
    void PlaceAnyhow(TName name, uint32_t key, int32_t offset);
    TState StepOverUnknown(TState state);
    TInference Infer(const TOpenElement& holder, TName name);
    TInference InferWithin(const TOpenElement& holder, TState state, TName name, int depth, uint32_t& left);
    void Push(TName name, uint32_t key, int32_t offset, TManner manner);
    void Close(uint32_t number);
    void CloseTo(size_t count);
    void Pop();

    TGrammar& FGrammar;
    TPlaces FPlaces;
    std::vector<TOpenElement> FOpen;
    std::vector<int32_t> FTops;  // innermost open element by key; -1 for none
    bool FIsXML = false;
    bool FIsSpent = false;
    uint32_t FMovesLeft = 0;
    bool FHasLastOpened = false;      // the last opening tag left an element open
    std::vector<TMeaning> FMeanings;  // by the number of the log
    std::vector<std::string> FTexts;  // by key
    std::unordered_map<std::string, uint32_t> FKeys;
    std::unordered_map<TName, uint32_t> FImpliedKeys;
    const TTagLog* FLog = nullptr;
    uint64_t FNaming = 0;
    std::unordered_map<uint64_t, TInference> FInferred;
};

}  // namespace caretwell
