// The grammar of one schema: for each place of an element, the declaration that counts there,
// and for each declaration its content as states.
//
//     root -> html -> body -> ul -> li        one declaration a name in a DTD,
//     measure -> part, part -> measure        one for each type that declares it in an XSD
//
// A declaration is compiled when a walk first comes to it, and once. Names are numbers here;
// how documents write them is the grammar's business.
#pragma once

#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "grammar/ContentModels.h"
#include "grammar/NameSet.h"

namespace caretwell {

class TDocumentNamespaces;

/// Number of a declaration.
using TElementId = uint32_t;
inline constexpr TElementId RootElement = 0;
inline constexpr TElementId UnknownElement = 0xFFFF'FFFF;

/// Inside an element, however deep, Name may stand wherever Like may.
struct TLikeness {
    TName Name, Like;
    friend bool operator==(const TLikeness&, const TLikeness&) = default;
};

/// What one declaration says.
struct TElementModel {
    TName Name = NoName;
    TState Start = TContentModels::Loose;  ///< nothing read yet
    bool MayOmitStart = false;
    bool MayOmitEnd = false;
    bool IsEmpty = false;             ///< never holds anything
    bool HoldsAny = false;            ///< names that no schema declares may stand in it too
    bool IsExact = true;              ///< false where the model is coarser than the schema
    bool IsTransparent = false;       ///< holds what the element around it holds, and Own
    bool HasExceptions = false;       ///< one of the next three is not empty
    TNameSet Inclusions, Exclusions;  ///< for all that it holds, however deep
    std::vector<TLikeness> Likenesses;
    TNameSet Own;
    TNameSet Alphabet;  ///< all names of the model
    /// Children that are declared for this place alone, by name.
    std::vector<std::pair<TName, TElementId>> Children;
};

class TGrammar {
public:
    virtual ~TGrammar() = default;

    const TElementModel& Get(TElementId id);
    TContentModels& Models() { return FModels; }
    /// The declaration of a name in an element; UnknownElement if it has none.
    TElementId FindChild(TElementId parent, TName name);
    /// True if one of the names that a wildcard of a model stands for is name.
    virtual bool IsMatch(TName wildcard, TName name) const;
    /// The names that may stand in the place of a wildcard.
    virtual TNameSet GetMatches(TName wildcard) const;

    /// What a name written in a document means; NoName if nothing.
    virtual TName FindName(std::string_view written) const = 0;
    /// Another name that is written alike; NoName if there is none.
    virtual TName NextAlike(TName) const { return NoName; }
    /// How a document writes the name.
    virtual std::string GetText(TName name) const { return FNames[name]; }
    /// The prefixes that a document binds have changed.
    virtual void SetNamespaces(const TDocumentNamespaces&) {}
    size_t GetNameCount() const { return FNames.size(); }
    size_t GetElementCount() const { return FElements.size(); }

protected:
    TName AddName(std::string_view text);
    TElementId AddElement(TName name);
    /// Which declaration a name means where no other is declared for the place.
    void SetGlobal(TName name, TElementId id);
    TElementModel& Edit(TElementId id) { return FElements[id].Model; }
    virtual void Compile(TElementId id, TElementModel& model) = 0;
    /// Gives the model its content; what is coarse about it is noted.
    void SetContent(TElementModel& model, TTerm content);

private:
    struct TSlot {
        TElementModel Model;
        bool IsCompiled = false;
    };
    TContentModels FModels;
    std::deque<TSlot> FElements;
    std::vector<std::string> FNames;
    std::vector<TElementId> FGlobals;  // by name
};

}  // namespace caretwell
