// Loading, the tables of symbols, the store of nodes, and messages.
#include "schema/DTDParser.h"

#include <fstream>

#include "host/Nibapi.h"
#include "host/Platform.h"

namespace caretwell {
namespace {

constexpr size_t MaxShownText = 200;

/// Text of a schema as part of a message: whatever would break a line of the message
/// view or its UTF-8 is shown by its number.
std::string Shown(std::string_view text) {
    constexpr char Digits[] = "0123456789ABCDEF";
    bool isCut = text.size() > MaxShownText;
    if (isCut) text = text.substr(0, MaxShownText);
    bool isUtf8 = ToUtf8(ToUtf16(text)) == text;
    std::string shown;
    for (char c : text) {
        auto byte = static_cast<uint8_t>(c);
        bool isPlain = (byte >= 0x20 && byte < 0x7F) || (byte >= 0x80 && isUtf8);
        if (isPlain) shown += c;
        else shown.append("\\x").append(1, Digits[byte >> 4]).append(1, Digits[byte & 15]);
    }
    return isCut ? shown + "..." : shown;
}

std::string FormatMessage(std::string_view format, std::initializer_list<std::string_view> arguments) {
    std::string message;
    auto argument = arguments.begin();
    for (size_t place; (place = format.find("%s")) != format.npos; format.remove_prefix(place + 2)) {
        message += format.substr(0, place);
        if (argument != arguments.end()) message += Shown(*argument++);
    }
    return message.append(format);
}

/// Closes the scanner's streams however a load ends.
struct TOpenScanner {
    explicit TOpenScanner(TDTDScanner& scanner) : FScanner(scanner) {}
    TOpenScanner(const TOpenScanner&) = delete;
    TOpenScanner& operator=(const TOpenScanner&) = delete;
    ~TOpenScanner() { FScanner.Close(); }
    TDTDScanner& FScanner;
};

}  // namespace

TDTDParser::TDTDParser() : FScanner(std::make_unique<TDTDScanner>(*this)) {}

TDTDParser::~TDTDParser() = default;

void TDTDParser::LoadFromFile(const std::string& fileName) {
    std::ifstream file(fileName, std::ios::binary);
    FScanner->FFileName = fileName;
    if (!file.is_open()) throw EDTDParserError("Invalid file " + fileName);
    TOpenScanner open(*FScanner);
    FScanner->LoadFromStream(file, fileName);
    Parse();
}

void TDTDParser::LoadFromStream(std::istream& stream) {
    TOpenScanner open(*FScanner);
    FScanner->LoadFromStream(stream, {});
    Parse();
}

void TDTDParser::Parse() {
    if (GetPlatform().IsMainThread())
        if (auto messages = GetService<INibMessageServices>()) messages->ClearMessages();
    FMessageCount = 0;
    try {
        FScanner->StartFile();
        ParseDocument();
    } catch (...) {
        MakeSymArray();
        throw;
    }
    MakeSymArray();
    FChains = {};
}

void TDTDParser::MakeSymArray() {
    FSymbols.clear();
    FSymbols.reserve(static_cast<size_t>(FSymbolCount));
    for (TDTDSymbol* symbol = FSymbolList; symbol; symbol = symbol->FNext) FSymbols.push_back(symbol);
}

TDTDSymbol* TDTDParser::LookupSymbol(std::string_view name, TDeclType declType) const {
    switch (declType) {
        case dtNone: return FSymbolTable.Lookup(name);
        case dtAttribute: return nullptr;
        case dtParameterizedEntity: return FParameterizedEntityTable.Lookup(name);
        case dtEntity: return FEntityTable.Lookup(name);
        case dtElement: return FElementTable.Lookup(name);
    }
    return nullptr;
}

template <class T>
T* TDTDParser::Enter(std::deque<T>& store, TDTDSymbolTable* table, std::string_view name) {
    T* symbol = &store.emplace_back(Intern(name));
    if (table) table->Enter(symbol);
    symbol->FNext = FSymbolList;
    FSymbolList = symbol;
    ++FSymbolCount;
    return symbol;
}

TDTDSymbol* TDTDParser::EnterSymbol(std::string_view name, TDeclType declType) {
    switch (declType) {
        case dtNone: break;
        case dtAttribute: return Enter(FAttributes, nullptr, name);
        case dtParameterizedEntity: return Enter(FParameterizedEntities, &FParameterizedEntityTable, name);
        case dtEntity:
            RequireAtMost(MaxEntities, FEntities.size() + 1);
            return Enter(FEntities, &FEntityTable, name);
        case dtElement: return EnterElement(name);
    }
    return Enter(FWords, &FSymbolTable, name);
}

TDTDElement* TDTDParser::EnterElement(std::string_view name) {
    TDTDElement* element = Enter(FElements, &FElementTable, name);
    element->FOrdinal = GetElementCount() - 1;
    TDTDEntityNames names = FScanner->GetParameterizedEntityNames();
    FElementEntityCount += names.FCount;
    if (FElementEntityCount <= MaxElementEntities) element->FEntityNames = std::move(names);
    RequireAtMost(MaxElementEntities, FElementEntityCount);
    RequireAtMost(MaxElements, FElements.size());
    return element;
}

TDTDExprNode* TDTDParser::CreateExpr() {
    TDTDExprNode* node = nullptr;
    if (FFreeNodes.empty()) {
        RequireAtMost(MaxExprs, FNodes.size() + 1);
        node = &FNodes.emplace_back();
    } else {
        node = FFreeNodes.back();
        FFreeNodes.pop_back();
        *node = {};
    }
    node->FNextNode = FExprs;
    if (FExprs) FExprs->FPrevNode = node;
    FExprs = node;
    return node;
}

void TDTDParser::RemoveExpr(TDTDExprNode* node) {
    if (!node) return;
    if (node->FPrevNode) node->FPrevNode->FNextNode = node->FNextNode;
    else FExprs = node->FNextNode;
    if (node->FNextNode) node->FNextNode->FPrevNode = node->FPrevNode;
    FFreeNodes.push_back(node);
}

void TDTDParser::ClearTable() {
    FScanner->Close();
    for (TDTDSymbolTable* table : {&FSymbolTable, &FParameterizedEntityTable, &FEntityTable, &FElementTable})
        table->Clear();
    FSymbolList = nullptr;
    FExprs = nullptr;
    FSymbols.clear();
    FSymbolCount = 0;
    FWords.clear();
    FAttributes.clear();
    FParameterizedEntities.clear();
    FEntities.clear();
    FElements.clear();
    FContentRules.clear();
    FNodes.clear();
    FFreeNodes.clear();
    FTexts.clear();
    FElementAttributeCount = 0;
    FElementEntityCount = 0;
    FIsTooLarge = false;
}

std::string_view TDTDParser::Intern(std::string_view text) {
    auto found = FTexts.find(text);
    return found != FTexts.end() ? *found : *FTexts.emplace(text).first;
}

void TDTDParser::ParseError(TParseError severity, std::string_view format,
                            std::initializer_list<std::string_view> arguments) {
    if (!OnError || FMessageCount > MaxMessages) return;
    bool isLast = ++FMessageCount > MaxMessages;
    std::string message =
        isLast ? "Too many messages, the others are not shown" : FormatMessage(format, arguments);
    OnError(this, isLast ? peHint : severity, message, FScanner->FLine, FScanner->FFileName);
}

void TDTDParser::ParseErrorExpected(std::string_view expected, std::string_view found) {
    ParseError(peError, "Expected %s but found %s", {expected, found});
}

/// Reading ends here; what was read stands.
void TDTDParser::TooLarge() {
    if (FIsTooLarge) return;
    FIsTooLarge = true;
    ParseError(peFailure, "Schema too large", {});
    FScanner->Stop();
}

}  // namespace caretwell
