#include "grammar/SchemaGrammars.h"

#include <algorithm>

#include "grammar/Answer.h"
#include "grammar/DTDGrammar.h"
#include "grammar/XSDGrammar.h"
#include "parser/MLParser.h"
#include "symbols/MLSymbolManager.h"
#include "symbols/SchemaReaderCache.h"
#include "symbols/XSDLoader.h"

namespace caretwell {

void TSchemaGrammars::SetWatching(bool value) {
    if (value == FIsWatching) return;
    FIsWatching = value;
    FLog.Begin({});
    FManager.GetParser().SetTagLog(value ? &FLog : nullptr);
}

std::shared_ptr<TGrammar> TSchemaGrammars::MakeGrammar(const std::string& file) const {
    if (const TDTDParser* reader = FindDTDReader(file)) return std::make_shared<TDTDGrammar>(*reader);
    if (FManager.GetKibitzMode() == kmXML)
        return std::make_shared<TXSDGrammar>(TXSDLoader(FManager).GetPlan(file));
    return nullptr;
}

TSchemaGrammars::TKept* TSchemaGrammars::FindGrammar() {
    const std::string& file = FManager.GetSchemaFile();
    uint64_t generation = GetDTDReaderGeneration();
    // What was compiled points into its reader.
    std::erase_if(FKept, [&](const TKept& kept) { return kept.Generation != generation; });
    auto found = std::ranges::find(FKept, file, &TKept::File);
    if (found != FKept.end()) {
        std::rotate(FKept.begin(), found, found + 1);
        return &FKept.front();
    }
    std::shared_ptr<TGrammar> grammar = MakeGrammar(file);
    if (!grammar) return nullptr;
    if (FKept.size() == MaxKept) FKept.pop_back();
    FKept.push_front({file, generation, grammar, std::make_unique<TWalk>(*grammar), {}});
    return &FKept.front();
}

TWalk* TSchemaGrammars::WalkToCaret() {
    TKept* kept = FIsWatching && !FManager.GetSchemaFile().empty() ? FindGrammar() : nullptr;
    if (!kept) return nullptr;
    const TMLParser& parser = FManager.GetParser();
    bool isXML = FManager.GetKibitzMode() != kmHTML || parser.FIsXML;
    TName context = FLog.GetContext().empty() ? NoName : kept->Grammar->FindName(FLog.GetContext());
    if (kept->Namespaces != parser.FNamespaces) {
        kept->Namespaces = parser.FNamespaces;
        kept->Grammar->SetNamespaces(parser.FNamespaces);
        kept->Walk->ForgetNames();
    }
    kept->Walk->Begin(FLog, isXML, context);
    kept->Walk->Read(FLog, 0, FLog.GetCountBeforeCaret());
    return kept->Walk.get();
}

bool TSchemaGrammars::GetAnswer(TGrammarAnswer& answer) {
    answer = {};
    TWalk* walk = WalkToCaret();
    if (walk) answer = Answer(*walk, FLog, FLog.GetCountBeforeCaret());
    return walk;
}

}  // namespace caretwell
