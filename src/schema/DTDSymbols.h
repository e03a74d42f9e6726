// What a document type definition declares, as the reader keeps it: elements with
// their content models and attributes, parameter entities, general entities, and the
// plain words of value lists.
//
//     <!ELEMENT ul - - (li)+>     element "ul"; entry 0 of its list: one node, the word "li"
//     <!ATTLIST ul type (disc|square) #IMPLIED>    entry 1: node "type", its Right: disc, square
//
// A TDTDParser owns all of it, in stores of one kind each; the links between symbols
// and between nodes only tell the order. Names are views into the parser's text pool,
// so that the one name of an attribute on 150 elements costs its bytes once. Nothing
// here outlives the parser.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "markup/NameMap.h"

namespace caretwell {

/// What a name declares or refers to.
enum TDeclType : uint8_t { dtNone, dtAttribute, dtParameterizedEntity, dtEntity, dtElement };
/// The connector after an item of a content model.
enum TExprOp : uint8_t { eoNull, eoLogicalOr, eoSequence, eoLogicalAnd };
/// The occurrence mark of an item.
enum TExprAttributes : uint8_t { eaNone, eaZeroOrMore, eaOneOrMore, eaZeroOrOne };
/// Severity of a message.
enum TParseError : uint8_t { peFailure, peError, peWarning, peHint };

struct TDTDSymbol;

/// One item of a content model or value list. An item may be a word, a nested group,
/// both (a group hangs on the item before it) or, at the end of a chain, nothing.
struct TDTDExprNode {
    TExprOp FOp = eoNull;
    TExprAttributes FAttr = eaNone;       ///< of the item, or of the closed group that begins here
    TExprAttributes FItemAttr = eaNone;   ///< of the item alone
    TExprAttributes FGroupAttr = eaNone;  ///< of the group that begins here, where it is closed with it
    TDTDExprNode* Left = nullptr;         ///< the nested group
    TDTDSymbol* Symbol = nullptr;         ///< the word
    TDTDExprNode* Right = nullptr;        ///< the next item at this level
    TDTDExprNode* FNextNode = nullptr;
    TDTDExprNode* FPrevNode = nullptr;
};

/// Visits a tree in the order node, Left, Right. It keeps the groups still to be
/// visited itself: content models nest as deep as a file likes.
class TDTDExprWalk {
public:
    explicit TDTDExprWalk(TDTDExprNode* root) { Push(root); }
    /// The next node; null at the end, at once for a null root.
    TDTDExprNode* Next();
    /// Visits a tree before the rest; null is passed over.
    void Push(TDTDExprNode* node) {
        if (node) FPending.push_back(node);
    }

private:
    std::vector<TDTDExprNode*> FPending;
};

/// A list of nodes that it does not own.
class TDTDExprList {
public:
    void AddExpr(TDTDExprNode* node) { FExprs.push_back(node); }
    /// Null out of range.
    TDTDExprNode* GetExpr(int32_t index) const;
    void SetExpr(int32_t index, TDTDExprNode* node) { FExprs[static_cast<size_t>(index)] = node; }
    /// Appends all items of the other list, which may be this one.
    void Assign(const TDTDExprList& other);
    int32_t GetCount() const { return static_cast<int32_t>(FExprs.size()); }

private:
    std::vector<TDTDExprNode*> FExprs;
};

/// Root of the symbols; by itself a word of a value list.
struct TDTDSymbol {
    static constexpr TDeclType Kind = dtNone;

    explicit TDTDSymbol(std::string_view name, TDeclType kind = dtNone) : FName(name), FKind(kind) {}
    TDTDSymbol(const TDTDSymbol&) = delete;
    TDTDSymbol& operator=(const TDTDSymbol&) = delete;

    std::string_view FName;
    TDTDSymbol* FNext = nullptr;              ///< the symbol entered before this one
    std::unique_ptr<TDTDExprList> FExprList;  ///< null until GetExprList
    const TDeclType FKind;                    ///< tells the class; see SymbolAs

    /// The list, made on first use.
    TDTDExprList& GetExprList();
};

/// The symbol as one of its descendants; null if it is null or another kind.
template <class T>
T* SymbolAs(TDTDSymbol* symbol) {
    return symbol && symbol->FKind == T::Kind ? static_cast<T*>(symbol) : nullptr;
}

struct TAttrAttributes {
    bool Fixed = false;
    bool Required = false;
    std::string_view FixedValue;
};

struct TDTDAttribute : TDTDSymbol {
    static constexpr TDeclType Kind = dtAttribute;
    explicit TDTDAttribute(std::string_view name) : TDTDSymbol(name, Kind) {}

    const TAttrAttributes* FAttrs = nullptr;  ///< null until SetAttr
    std::string_view FEditor;                 ///< word of the value editor; empty if none

    /// The value must live as long as the symbol.
    void SetAttr(std::string_view value, bool required, bool fixed);

private:
    std::unique_ptr<TAttrAttributes> FOwnAttrs;
};

struct TDTDParameterizedEntity : TDTDSymbol {
    static constexpr TDeclType Kind = dtParameterizedEntity;
    explicit TDTDParameterizedEntity(std::string_view name) : TDTDSymbol(name, Kind) {}

    std::string FExternalID;
    std::string FPublicID;
    std::string FValue;
    bool FIsDeclared = false;   ///< not only mentioned
    bool FIsExpanding = false;  ///< its text is being read, so a reference to it would never end
};

struct TDTDEntity : TDTDSymbol {
    static constexpr TDeclType Kind = dtEntity;
    explicit TDTDEntity(std::string_view name) : TDTDSymbol(name, Kind) {}

    bool FIsDeclared = false;
    std::vector<int32_t> FValues;  ///< its characters

    void AddValue(int32_t value) { FValues.push_back(value); }
    /// -1 out of range.
    int32_t GetValues(int32_t index) const;
    int32_t GetValueCount() const { return static_cast<int32_t>(FValues.size()); }
};

using TDTDNameList = std::vector<std::string_view>;

/// The parameter entities under expansion at one moment, outermost first. All moments
/// of one expansion share the one growing list and differ in how much of it they see.
struct TDTDEntityNames {
    std::shared_ptr<const TDTDNameList> FNames;
    size_t FCount = 0;

    std::span<const std::string_view> View() const {
        return FNames ? std::span(*FNames).first(FCount) : std::span<const std::string_view>();
    }
};

/// What a DTD cannot say of its models, out of the comment that does: "dl.div" and "dl" for dl.div=dl.
struct TDTDContentRule {
    std::string_view Place, Meaning;
};

struct TDTDElement : TDTDSymbol {
    static constexpr TDeclType Kind = dtElement;
    explicit TDTDElement(std::string_view name) : TDTDSymbol(name, Kind) {}

    int32_t FOrdinal = 0;  ///< number of the element in its parser, in order of first mention
    bool FRequiresStartTag = false;
    bool FRequiresEndTag = false;
    bool FEmpty = false;
    bool FAny = false;
    bool FIsDeclared = false;  ///< an ELEMENT declaration was read, not only a mention
    TDTDExprNode* FExclusions = nullptr;
    TDTDExprNode* FInclusions = nullptr;
    TDTDEntityNames FEntityNames;
    /// The attributes by name, null until one is looked up: that happens for the few
    /// elements whose attributes have editors. Links of its own, because one attribute
    /// may belong to many elements.
    std::unique_ptr<std::unordered_map<std::string_view, TDTDAttribute*>> FAttributes;

    /// Takes the place of an attribute that was entered under the name before.
    void EnterSymbol(TDTDAttribute* attribute);
    /// The attribute declared last under exactly this name; null if none.
    TDTDAttribute* LookupSymbol(std::string_view name);
    std::span<const std::string_view> GetEntity() const { return FEntityNames.View(); }

    /// Entry 0 of the element's list is its content model, wherever the ELEMENT
    /// declaration stands: after an ATTLIST it takes the place kept for it. The
    /// first declaration stands in entry 0, a second one goes to the end.
    void AddContent(TDTDExprNode* content);

private:
    int32_t FEnteredCount = 0;  // of the expression list
};

/// Symbols by exact name. It owns none of them.
class TDTDSymbolTable {
public:
    /// Null if no symbol has the name.
    TDTDSymbol* Lookup(std::string_view name) const;
    void Enter(TDTDSymbol* symbol) { FSymbols.Add(ExactHash(symbol->FName), symbol); }
    void Clear() { FSymbols.Clear(); }

private:
    TNameMap<TDTDSymbol*> FSymbols;
};

}  // namespace caretwell
