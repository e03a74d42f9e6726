// The grammar of the schema in hand, and the answer at the caret of the last parse.
#pragma once

#include <deque>
#include <memory>
#include <string>

#include "grammar/GrammarAnswer.h"
#include "grammar/Walk.h"
#include "parser/DocumentNamespaces.h"
#include "parser/TagLog.h"

namespace caretwell {

class TMLSymbolManager;

class TSchemaGrammars {
public:
    /// The manager outlives it.
    explicit TSchemaGrammars(TMLSymbolManager& manager) : FManager(manager) {}
    ~TSchemaGrammars() { SetWatching(false); }
    TSchemaGrammars(const TSchemaGrammars&) = delete;
    TSchemaGrammars& operator=(const TSchemaGrammars&) = delete;

    bool GetWatching() const { return FIsWatching; }
    void SetWatching(bool value);
    bool GetAnswer(TGrammarAnswer& answer);
    /// The walk to the caret of the last parse; null without a schema.
    TWalk* WalkToCaret();
    const TTagLog& GetLog() const { return FLog; }

private:
    static constexpr size_t MaxKept = 4;
    struct TKept {
        std::string File;
        uint64_t Generation;
        std::shared_ptr<TGrammar> Grammar;
        std::unique_ptr<TWalk> Walk;
        TDocumentNamespaces Namespaces;
    };
    TKept* FindGrammar();
    std::shared_ptr<TGrammar> MakeGrammar(const std::string& file) const;

    TMLSymbolManager& FManager;
    TTagLog FLog;
    bool FIsWatching = false;
    std::deque<TKept> FKept;  // the one used last in front
};

}  // namespace caretwell
