// Declarations: elements, attribute lists, entities, conditional sections.
#include <charconv>
#include <optional>

#include "schema/DTDParser.h"

namespace caretwell {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// The number at the front of the text, as large as fits; nothing if there is none.
std::optional<int32_t> TakeNumber(std::string_view& text, int base) {
    int32_t number = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    if (error == std::errc::invalid_argument) return std::nullopt;
    text.remove_prefix(static_cast<size_t>(end - text.data()));
    return error == std::errc::result_out_of_range ? INT32_MAX : number;
}

}  // namespace

void TDTDParser::ParseDocument() {
    int32_t openSections = 0;
    NextToken();
    for (;;) {
        if (Token() == tkEof) break;
        if (Token() == tkConditionalSectionEnd) {
            // One too many ends the read, as the end of the file does.
            if (openSections == 0) break;
            --openSections;
            NextToken();
            continue;
        }
        bool isSection = Token() == tkConditionalSectionStart;
        if (isSection && ParseSectionStart(openSections)) continue;
        if (!isSection && !ParseDeclaration()) Expected("<!ELEMENT, <!ATTLIST, <!ENTITY");
        if (Token() != tkGreaterThan) Expected(">");
        NextToken();
    }
    for (; openSections > 0 && FMessageCount <= MaxMessages; --openSections) Expected("]]>");
}

bool TDTDParser::ParseDeclaration() {
    switch (Token()) {
        case tkElement: ParseElement(); return true;
        case tkAttList: ParseAttList(); return true;
        case tkEntity: ParseEntity(); return true;
        default: return false;
    }
}

/// False if the section lacks its "[".
bool TDTDParser::ParseSectionStart(int32_t& openSections) {
    NextToken();
    bool isIgnored = false;
    if (Token() == tkIdentifier) {
        isIgnored = SameText(FScanner->FTokenText, std::string_view("IGNORE"));
        NextToken();
    }
    if (isIgnored) {
        FScanner->Ignore();
        // The end that was found belongs to this section and to none around it.
        if (Token() == tkConditionalSectionEnd) NextToken();
        else Expected("]]>");
        return true;
    }
    if (Token() != tkLBracket) {
        Expected("[");
        return false;
    }
    ++openSections;
    NextToken();
    return true;
}

TDTDExprNode* TDTDParser::ParseElement() {
    FDeclType = dtElement;
    NextToken();
    TDTDExprNode* names = ParseExpr();
    bool requiresStartTag = ParseRequirement();
    bool requiresEndTag = ParseRequirement();
    TDTDExprNode* content = ParseExpr();
    MarkContent(names, content);
    TDTDExprNode* inclusions = nullptr;
    TDTDExprNode* exclusions = nullptr;
    for (int i = 0; i < 2 && (Token() == tkPlus || Token() == tkMinus); ++i) {
        TDTDExprNode*& exceptions = Token() == tkPlus ? inclusions : exclusions;
        NextToken();
        exceptions = ParseExpr();
    }
    FDeclType = dtNone;
    TDTDExprWalk walk(names);
    while (TDTDExprNode* node = walk.Next()) {
        auto* element = SymbolAs<TDTDElement>(node->Symbol);
        if (!element) continue;
        element->FRequiresStartTag = requiresStartTag;
        element->FRequiresEndTag = requiresEndTag;
        element->AddContent(content);
        if (inclusions) element->FInclusions = inclusions;
        if (exclusions) element->FExclusions = exclusions;
    }
    return names;
}

/// A minimisation mark; XML has none, and there all tags are required.
bool TDTDParser::ParseRequirement() {
    bool isOmissible = Token() == tkIdentifier && FScanner->FTokenText == "O";
    if (isOmissible || Token() == tkMinus) NextToken();
    return !isOmissible;
}

void TDTDParser::MarkContent(TDTDExprNode* names, TDTDExprNode* content) {
    auto* element = SymbolAs<TDTDElement>(names->Symbol);
    if (!element || !content->Symbol) return;
    element->FEmpty = SameText(content->Symbol->FName, std::string_view("EMPTY"));
    element->FAny = SameText(content->Symbol->FName, std::string_view("ANY"));
}

void TDTDParser::ParseAttList() {
    NextToken();
    FDeclType = dtElement;
    TDTDExprNode* names = ParseExpr();
    FDeclType = dtNone;
    std::vector<TDTDExprNode*> attributes;
    while (Token() == tkIdentifier) {
        FDeclType = dtAttribute;
        TDTDExprNode* name = ParseExpr();
        FDeclType = dtNone;
        name->Right = ParseAttributeType();
        ParseAttribute(name->Symbol);
        attributes.push_back(name);
    }
    AddAttributes(names, attributes);
}

TDTDExprNode* TDTDParser::ParseAttributeType() {
    size_t before = FNodes.size();
    TDTDExprNode* type = ParseExpr();
    RequireAtMost(MaxValuesOfAttribute, FNodes.size() - before);
    return type;
}

void TDTDParser::AddAttributes(TDTDExprNode* names, const std::vector<TDTDExprNode*>& attributes) {
    TDTDExprWalk walk(names);
    while (TDTDExprNode* node = walk.Next()) {
        auto* element = SymbolAs<TDTDElement>(node->Symbol);
        if (!element) continue;
        FElementAttributeCount += attributes.size();
        RequireAtMost(MaxElementAttributes, FElementAttributeCount);
        TDTDExprList& list = element->GetExprList();
        RequireAtMost(MaxAttributesOfElement, static_cast<size_t>(list.GetCount()) + attributes.size());
        if (FIsTooLarge) return;
        if (list.GetCount() == 0) list.AddExpr(CreateExpr());  // the place of the content model
        for (TDTDExprNode* attribute : attributes) list.AddExpr(attribute);
    }
}

void TDTDParser::ParseAttribute(TDTDSymbol* attribute) {
    TDefault result;
    switch (Token()) {
        case tkPound: ParsePoundDefault(result); break;
        case tkNumber:
        case tkIdentifier:
        case tkLParen: ParseExpr(); break;  // a default as a word: nobody asks for it
        case tkStringLiteral: NextToken(); break;
        default: break;
    }
    if (auto* symbol = SymbolAs<TDTDAttribute>(attribute))
        symbol->SetAttr(result.FixedValue, result.Required, result.Fixed);
}

void TDTDParser::ParsePoundDefault(TDefault& result) {
    NextToken();
    if (Token() != tkIdentifier) return Expected("identifier");
    auto isWord = [&](std::string_view word) { return SameText(FScanner->FTokenText, word); };
    if (isWord("REQUIRED")) {
        result.Required = true;
    } else if (isWord("FIXED")) {
        result.Fixed = true;
        NextToken();
        if (Token() == tkStringLiteral) result.FixedValue = Intern(FScanner->FTokenText);
    } else if (!isWord("IMPLIED") && !isWord("PCDATA")) {
        return Expected("IMPLIED, REQUIRED, FIXED, PCDATA");
    }
    NextToken();
}

void TDTDParser::ParseEntity() {
    NextToken();
    FDeclType = dtEntity;
    if (Token() == tkPercent) {
        FDeclType = dtParameterizedEntity;
        NextToken();
    }
    TDTDSymbol* symbol = ParseExpr()->Symbol;
    bool isParameter = FDeclType == dtParameterizedEntity;
    FDeclType = dtNone;
    auto* parameter = SymbolAs<TDTDParameterizedEntity>(symbol);
    if (Token() == tkIdentifier && FScanner->FTokenText == "PUBLIC") ParsePublicID(parameter);
    if (!isParameter) {
        TDTDExprNode* type = ParseExpr();
        if (symbol) symbol->GetExprList().AddExpr(type);
    }
    if (Token() != tkStringLiteral) return;
    // The first declaration of an entity binds.
    if (parameter && parameter->FValue.empty()) parameter->FValue = FScanner->FTokenText;
    if (!isParameter) ParseCharRefs(symbol, FScanner->FTokenText);
    NextToken();
}

/// PUBLIC, the public identifier, and the system identifier, which goes before it.
void TDTDParser::ParsePublicID(TDTDParameterizedEntity* entity) {
    NextToken();
    std::string last;
    if (Token() == tkStringLiteral) {
        last = FScanner->FTokenText;
        if (entity && entity->FPublicID.empty()) entity->FPublicID = last;
        NextToken();
    }
    if (Token() == tkStringLiteral) {
        last = FScanner->FTokenText;
        NextToken();
    }
    if (entity && entity->FExternalID.empty()) entity->FExternalID = last.empty() ? entity->FPublicID : last;
}

/// The numbers in a value: "&#160;" gives 160, "&#38;#60;" 38 and 60.
void TDTDParser::ParseCharRefs(TDTDSymbol* entity, std::string_view text) {
    auto* symbol = SymbolAs<TDTDEntity>(entity);
    while (symbol && !text.empty()) {
        char c = text.front();
        bool isHex = c == 'X' || c == 'x';
        // A letter that is not behind an "x" belongs to no reference.
        if (isHex || !IsDigit(c)) text.remove_prefix(1);
        if (!isHex && !IsDigit(c)) continue;
        if (auto number = TakeNumber(text, isHex ? 16 : 10)) symbol->AddValue(*number);
    }
}

}  // namespace caretwell
