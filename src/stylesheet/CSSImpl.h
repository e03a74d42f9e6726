// The tree that a parse of a style sheet leaves behind, and the small set of strings
// that tree and symbol table share.
//
//     a { color: red }   ->   TRuleSet( TSelector a, TDeclaration color( TNodeOp red ) )
//
// The tree answers one question: which declaration does the caret stand in? Nothing is
// evaluated on it. All nodes of a parse hang on one chain, newest first, so that the
// answer is a short walk from the caret backwards and no descent.
//
// Nodes and their texts live in the parser's TNodePool until its next parse. A
// reference from node to node never owns.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace caretwell {

enum TNodeKind : uint8_t {
    nkStyleSheet,
    nkSGMLComment,
    nkImport,
    nkMedia,
    nkPage,
    nkFontFace,
    nkRuleSet,
    nkOp,
    nkSelector,
    nkSimpleSelector,
    nkDeclaration,
    nkValue
};
enum TSelectorType : uint8_t { stHash, stClass, stAttribute, stPseudo };
enum TCSSPriority : uint8_t { cpNone, cpImportant };
enum TOp : uint8_t {
    OpNone,
    OpSlash,
    OpComma,
    OpPlus,
    OpGreaterThan,
    OpMinus,
    OpEquals,
    OpIncludes,
    OpDashMatch
};
enum TValueKind : uint8_t {
    vkString,
    vkIdent,
    vkHash,
    vkEms,
    vkExs,
    vkLength,
    vkAngle,
    vkTime,
    vkFrequency,
    vkDimension,
    vkPercentage,
    vkNumber,
    vkURI,
    vkFunction,
    vkUnicodeRange
};

/// A set of 8-bit strings, case included, that keeps the order of insertion.
class TCSSStringList {
public:
    /// Does nothing if an equal item is there.
    void Add(std::string_view text);
    /// Empty for an index out of range. The view lives until the next change.
    std::string_view GetItem(int32_t index) const;
    /// Puts the last item in the place of the one that is equal, so order is not kept.
    void Remove(std::string_view text);
    bool Contains(std::string_view text) const { return Find(text) >= 0; }

    int32_t FCount = 0;

private:
    void Grow();
    int32_t Find(std::string_view text) const;
    void IndexAll();
    void Index(int32_t item);

    std::vector<std::string> FItems;
    // Long lists find their items by hash: open addressing, index + 1, 0 for a free
    // slot. A list with few items has none.
    std::vector<int32_t> FSlots;
};

/// Base of the nodes.
struct TCSSNode {
    explicit TCSSNode(TNodeKind kind) : FKind(kind) {}
    TCSSNode* FNext = nullptr;  ///< the node made before this one
    TNodeKind FKind;
};

/// The items of a node, in order. An item stands in one list at most, and the link to
/// the next one lies in the item itself.
template <class T>
class TNodeList {
public:
    class TIterator {
    public:
        explicit TIterator(T* item) : FItem(item) {}
        T& operator*() const { return *FItem; }
        TIterator& operator++() {
            FItem = FItem->FSibling;
            return *this;
        }
        friend bool operator==(const TIterator&, const TIterator&) = default;

    private:
        T* FItem;
    };

    /// Ignores null, which is what a routine gives that met the caret first.
    void Add(T* item) {
        if (!item) return;
        if (FLast) FLast->FSibling = item;
        else FFirst = item;
        FLast = item;
    }
    TIterator begin() const { return TIterator(FFirst); }
    TIterator end() const { return TIterator(nullptr); }

private:
    T* FFirst = nullptr;
    T* FLast = nullptr;
};

struct TNodeOp : TCSSNode {
    explicit TNodeOp(TNodeKind kind = nkOp) : TCSSNode(kind) {}
    TOp FOp = OpNone;  ///< what links FLeft to FRight
    TCSSNode* FLeft = nullptr;
    TCSSNode* FRight = nullptr;
};

struct TSelector : TNodeOp {
    TSelector() : TNodeOp(nkSelector) {}
    TSelector* FSibling = nullptr;
};

/// One condition of a simple selector; only the field of its type means anything.
struct TSimpleSelectorValue {
    TSelectorType FSelectorType = stHash;
    std::string_view FHash;
    std::string_view FClass;
    TNodeOp* FAttrib = nullptr;
    std::string_view FPseudo;
    TSimpleSelectorValue* FSibling = nullptr;

    void SetHash(std::string_view text) { FSelectorType = stHash, FHash = text; }
    void SetClass(std::string_view text) { FSelectorType = stClass, FClass = text; }
    void SetAttrib(TNodeOp* node) { FSelectorType = stAttribute, FAttrib = node; }
    void SetPseudo(std::string_view text) { FSelectorType = stPseudo, FPseudo = text; }
};

struct TSimpleSelector : TCSSNode {
    TSimpleSelector() : TCSSNode(nkSimpleSelector) {}
    void AddValue(TSimpleSelectorValue* value) { FValues.Add(value); }
    std::string_view FElementName;
    TNodeList<TSimpleSelectorValue> FValues;
};

struct TCSSValueNode : TCSSNode {
    TCSSValueNode() : TCSSNode(nkValue) {}
    TValueKind FValueKind = vkIdent;
    std::string_view FValue;
};

struct TDeclaration : TCSSNode {
    TDeclaration() : TCSSNode(nkDeclaration) {}
    TCSSPriority FPriority = cpNone;
    std::string_view FProperty;
    TNodeOp* FExpr = nullptr;
    TDeclaration* FSibling = nullptr;
};

/// What may stand at the top of a sheet.
struct TCSSRule : TCSSNode {
    using TCSSNode::TCSSNode;
    TCSSRule* FSibling = nullptr;
};
using TRuleList = TNodeList<TCSSRule>;
using TDeclarationList = TNodeList<TDeclaration>;

struct TStyleSheet : TCSSNode {
    TStyleSheet() : TCSSNode(nkStyleSheet) {}
    void AddRule(TCSSRule* rule) { FRules.Add(rule); }
    std::string_view FCharset;
    TRuleList FRules;
};

struct TSGMLComment : TCSSRule {
    TSGMLComment() : TCSSRule(nkSGMLComment) {}
    std::string_view FText;
};

struct TImport : TCSSRule {
    TImport() : TCSSRule(nkImport) {}
    std::string_view FURI;
    TCSSStringList FMediaList;
};

struct TMedia : TCSSRule {
    TMedia() : TCSSRule(nkMedia) {}
    void AddRule(TCSSRule* rule) { FRules.Add(rule); }
    TCSSStringList FMediaList;
    TRuleList FRules;
};

struct TPage : TCSSRule {
    TPage() : TCSSRule(nkPage) {}
    void AddDecl(TDeclaration* declaration) { FDecls.Add(declaration); }
    std::string_view FPageName;
    std::string_view FPseudoPage;
    TDeclarationList FDecls;
};

struct TFontFace : TCSSRule {
    TFontFace() : TCSSRule(nkFontFace) {}
    void AddDecl(TDeclaration* declaration) { FDecls.Add(declaration); }
    TDeclarationList FDecls;
};

struct TRuleSet : TCSSRule {
    TRuleSet() : TCSSRule(nkRuleSet) {}
    void AddSelector(TSelector* selector) { FSelectors.Add(selector); }
    void AddDecl(TDeclaration* declaration) { FDecls.Add(declaration); }
    TNodeList<TSelector> FSelectors;
    TDeclarationList FDecls;
};

}  // namespace caretwell
