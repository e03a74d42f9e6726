// Reads a document type definition: who may contain whom, which attributes exist with
// which values, and the character entities. It does not validate, and it reads on
// after every error.
//
//     TDTDParser parser;
//     parser.OnError = ...;
//     parser.LoadFromFile(path);
//     for (int32_t i = 0; i < parser.FSymbolCount; ++i)
//         if (auto* element = SymbolAs<TDTDElement>(parser.GetSymbol(i))) ...
//
// A parser holds the result of one file and stays alive as its cache. It has no lock;
// its owner sees to it that one thread loads at a time.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <initializer_list>
#include <istream>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "markup/MLParserUtils.h"
#include "schema/DTDScanner.h"
#include "schema/DTDSymbols.h"

namespace caretwell {

/// Message, line (from 1) and file. The message is valid UTF-8 on one line.
using TParserErrorEvent =
    std::function<void(TDTDParser* sender, TParseError severity, const std::string& message, int32_t line,
                       const std::string& fileName)>;

class TDTDParser {
public:
    // A schema ends beyond these, with a message; what was read until then stands. The
    // largest definitions in use have a fifth of it.
    static constexpr size_t MaxExprs = 500'000;
    static constexpr size_t MaxElements = 100'000;
    static constexpr size_t MaxContentRules = 10'000;
    static constexpr size_t MaxEntities = 20'000;
    static constexpr size_t MaxAttributesOfElement = 4'096;
    static constexpr size_t MaxValuesOfAttribute = 10'000;
    /// Attributes, each counted for every element that has it.
    static constexpr size_t MaxElementAttributes = 250'000;
    /// Entity names, each counted for every element that came out of it.
    static constexpr size_t MaxElementEntities = 250'000;
    /// Binary rubbish has an error in every byte; nobody reads on after so many.
    static constexpr int32_t MaxMessages = 1000;

    TDTDParser();
    ~TDTDParser();
    TDTDParser(const TDTDParser&) = delete;
    TDTDParser& operator=(const TDTDParser&) = delete;

    /// Throws EDTDParserError if the file cannot be opened or a line fits into no block,
    /// and what the stream throws if it cannot be read; what was read until then stands,
    /// and the scanner's FFileName and FLine tell where it ended.
    void LoadFromFile(const std::string& fileName);
    /// The same with an empty file name. The stream is not owned.
    void LoadFromStream(std::istream& stream);
    /// Reads what the scanner was given. On the main thread, the message view is cleared first.
    void Parse();
    void MakeSymArray();
    /// From the symbol entered last to the first; the index must be below FSymbolCount.
    TDTDSymbol* GetSymbol(int32_t index) const { return FSymbols[static_cast<size_t>(index)]; }
    /// Elements declared or mentioned; their FOrdinal is below it.
    int32_t GetElementCount() const { return static_cast<int32_t>(FElements.size()); }
    /// By exact name; null if none, and always for dtAttribute: attributes are found in
    /// their element.
    TDTDSymbol* LookupSymbol(std::string_view name, TDeclType declType) const;
    /// Makes a symbol of the class that goes with the kind. Does not test whether the
    /// name has one.
    TDTDSymbol* EnterSymbol(std::string_view name, TDeclType declType);
    TDTDExprNode* CreateExpr();
    /// Unlinks and frees the node; null does nothing.
    void RemoveExpr(TDTDExprNode* node);
    /// Frees all symbols and nodes.
    void ClearTable();
    /// A view of equal text that lives as long as the parser's symbols.
    std::string_view Intern(std::string_view text);

    /// Puts the arguments in the place of each %s and tells OnError, with the scanner's
    /// file and line.
    void ParseError(TParseError severity, std::string_view format,
                    std::initializer_list<std::string_view> arguments);
    void ParseErrorExpected(std::string_view expected, std::string_view found);

    TDTDSymbolTable FSymbolTable;  ///< dtNone: words of value lists
    TDTDSymbolTable FParameterizedEntityTable;
    TDTDSymbolTable FEntityTable;
    TDTDSymbolTable FElementTable;
    std::vector<TDTDContentRule> FContentRules;  ///< in the order of the file
    TParserErrorEvent OnError;                   ///< may be empty
    std::unique_ptr<TDTDScanner> FScanner;
    TDTDSymbol* FSymbolList = nullptr;  ///< newest first, through FNext
    TDTDExprNode* FExprs = nullptr;     ///< newest first, through FNextNode
    std::vector<TDTDSymbol*> FSymbols;  ///< snapshot of FSymbolList
    int32_t FSymbolCount = 0;
    TDeclType FDeclType = dtNone;      ///< what a name met now declares or refers to
    TKibitzMode FKibitzMode = kmHTML;  ///< set by the owner; resolves included files

private:
    struct TTextHash : std::hash<std::string_view> {
        using is_transparent = void;
    };
    /// A chain of items under construction.
    struct TChain {
        TDTDExprNode* First;
        TDTDExprNode* Previous;  ///< null while the first item is read
        TDTDExprNode* Current;
    };
    struct TDefault {
        bool Required = false;
        bool Fixed = false;
        std::string_view FixedValue;
    };

    // Declarations (DTDDeclarations.cpp).
    void ParseDocument();
    bool ParseDeclaration();
    bool SkipOtherDeclaration();
    bool BeginsDeclaration() const;
    bool ParseSectionStart(int32_t& openSections);
    TDTDExprNode* ParseElement();
    bool ParseRequirement();
    void MarkContent(TDTDExprNode* names, TDTDExprNode* content);
    void ParseAttList();
    bool FindAttribute();
    TDTDExprNode* ParseAttributeType();
    void AddAttributes(TDTDExprNode* names, const std::vector<TDTDExprNode*>& attributes);
    void ParseAttribute(TDTDSymbol* attribute);
    void ParsePoundDefault(TDefault& result);
    void ParseEntity();
    void ParseExternalID(TDTDParameterizedEntity* entity);
    static void ParseCharRefs(TDTDEntity& entity, std::string_view text);

    // Content models and value lists (DTDExpressions.cpp).
    TDTDExprNode* ParseExpr();
    TDTDExprNode* ParseExprBody();
    void ParseItem(TDTDExprNode* node);
    bool ParseConnector(TChain& chain);
    void CloseGroup(TDTDExprNode* group);
    void AttachGroup(TChain& chain, TDTDExprNode* group);
    TChain StartChain();

    TTokenKind Token() const { return FScanner->FToken; }
    void NextToken() { FScanner->GetToken(); }
    bool IsWord(std::string_view word) const {
        return Token() == tkIdentifier && SameText(std::string_view(FScanner->FTokenText), word);
    }
    void Expected(std::string_view what) { ParseErrorExpected(what, FScanner->FTokenText); }
    template <class T>
    T* Enter(std::deque<T>& store, TDTDSymbolTable* table, std::string_view name);
    TDTDElement* EnterElement(std::string_view name);
    void RequireAtMost(size_t limit, size_t count) {
        if (count > limit) TooLarge();
    }
    void TooLarge();

    // One store a kind: a symbol costs no more than itself, and none is freed alone.
    std::deque<TDTDSymbol> FWords;
    std::deque<TDTDAttribute> FAttributes;
    std::deque<TDTDParameterizedEntity> FParameterizedEntities;
    std::deque<TDTDEntity> FEntities;
    std::deque<TDTDElement> FElements;
    std::deque<TDTDExprNode> FNodes;
    std::vector<TDTDExprNode*> FFreeNodes;
    std::unordered_set<std::string, TTextHash, std::equal_to<>> FTexts;
    std::vector<TChain> FChains;
    size_t FElementAttributeCount = 0;
    size_t FElementEntityCount = 0;
    int32_t FMessageCount = 0;
    bool FIsTooLarge = false;
};

}  // namespace caretwell
