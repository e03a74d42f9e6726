// Declarations: elements, attribute lists, entities, conditional sections.
#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>
#include <utility>

#include "schema/DTDParser.h"

namespace caretwell {
namespace {

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
        if (!isSection && SkipOtherDeclaration()) continue;
        if (!isSection && !ParseDeclaration()) Expected("<!ELEMENT, <!ATTLIST, <!ENTITY");
        if (Token() != tkGreaterThan) Expected(">");
        NextToken();
    }
    for (; openSections > 0 && FMessageCount <= MaxMessages; --openSections) Expected("]]>");
}

// Notations, short references and the like say nothing of what may stand where.
bool TDTDParser::SkipOtherDeclaration() {
    if (Token() != tkIdentifier || !FScanner->FTokenText.starts_with("<!")) return false;
    constexpr std::string_view known[] = {"NOTATION", "SHORTREF", "USEMAP",  "LINKTYPE", "DOCTYPE",
                                          "LINK",     "IDLINK",   "USELINK", "SGML"};
    std::string_view word = std::string_view(FScanner->FTokenText).substr(2);
    if (std::none_of(std::begin(known), std::end(known), [&](auto name) { return SameText(word, name); }))
        Expected("<!ELEMENT, <!ATTLIST, <!ENTITY");
    do NextToken();
    while (Token() != tkGreaterThan && !BeginsDeclaration());
    if (Token() == tkGreaterThan) NextToken();
    return true;
}

bool TDTDParser::BeginsDeclaration() const {
    switch (Token()) {
        case tkEof:
        case tkElement:
        case tkAttList:
        case tkEntity:
        case tkConditionalSectionStart:
        case tkConditionalSectionEnd: return true;
        default: return Token() == tkIdentifier && FScanner->FTokenText.starts_with("<!");
    }
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
    bool isOmissible = IsWord("O");
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
    while (FindAttribute()) {
        FDeclType = dtAttribute;
        TDTDExprNode* name = ParseExpr();
        FDeclType = dtNone;
        name->Right = ParseAttributeType();
        ParseAttribute(name->Symbol);
        attributes.push_back(name);
    }
    AddAttributes(names, attributes);
}

// Behind a mistake the list goes on with the next word that may be a name.
bool TDTDParser::FindAttribute() {
    auto isEnd = [this] { return Token() == tkGreaterThan || BeginsDeclaration(); };
    if (Token() != tkIdentifier && !isEnd()) {
        std::string found = FScanner->FTokenText;
        while (Token() != tkIdentifier && !isEnd()) NextToken();
        if (Token() == tkIdentifier || Token() == tkGreaterThan) ParseErrorExpected(">", found);
    }
    return !isEnd();
}

TDTDExprNode* TDTDParser::ParseAttributeType() {
    size_t before = FNodes.size();
    if (IsWord("NOTATION")) NextToken();  // the names of notations follow as a group
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
    if (IsWord("REQUIRED")) {
        result.Required = true;
    } else if (IsWord("FIXED")) {
        result.Fixed = true;
        NextToken();
        if (Token() == tkStringLiteral) result.FixedValue = Intern(FScanner->FTokenText);
    } else if (!IsWord("IMPLIED") && !IsWord("PCDATA") && !IsWord("CURRENT") && !IsWord("CONREF")) {
        Expected("IMPLIED, REQUIRED, FIXED, PCDATA");
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
    // The first declaration of an entity binds: that is how a definition is customised.
    if (parameter && std::exchange(parameter->FIsDeclared, true)) parameter = nullptr;
    auto* general = SymbolAs<TDTDEntity>(symbol);
    if (general && std::exchange(general->FIsDeclared, true)) general = nullptr;
    bool isExternal = IsWord("PUBLIC") || IsWord("SYSTEM");
    if (isExternal) ParseExternalID(parameter);
    if (!isParameter) {
        TDTDExprNode* type = ParseExpr();
        if (symbol) symbol->GetExprList().AddExpr(type);
    }
    if (Token() != tkStringLiteral) return;
    if (parameter) parameter->FValue = FScanner->FTokenText;
    if (general && !isExternal) ParseCharRefs(*general, FScanner->FTokenText);
    NextToken();
}

/// The public identifier after PUBLIC, and the system identifier, which goes before it.
void TDTDParser::ParseExternalID(TDTDParameterizedEntity* entity) {
    bool isPublic = IsWord("PUBLIC");
    NextToken();
    std::string first, last;
    for (std::string* text : {&first, &last}) {
        if (Token() != tkStringLiteral) break;
        *text = FScanner->FTokenText;
        NextToken();
    }
    if (!entity) return;
    if (isPublic) entity->FPublicID = first;
    entity->FExternalID = last.empty() ? first : last;
}

/// The characters of a value: "&#160;" gives 160, and so does the character itself. "&#38;#60;"
/// is how the mark-up's own characters are written, and gives 60.
void TDTDParser::ParseCharRefs(TDTDEntity& entity, std::string_view text) {
    std::u16string character = ToUtf16(text);
    if (CountCharacters(std::u16string_view(character)) == 1)
        return entity.AddValue(static_cast<int32_t>(FirstCharacter(character)));
    for (size_t place; (place = text.find("&#")) != text.npos;) {
        text.remove_prefix(place + 2);
        if (text.starts_with("38;#")) text.remove_prefix(4);
        bool isHex = text.starts_with('x') || text.starts_with('X');
        if (isHex) text.remove_prefix(1);
        if (auto number = TakeNumber(text, isHex ? 16 : 10)) entity.AddValue(*number);
    }
}

}  // namespace caretwell
