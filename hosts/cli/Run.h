// One run of a command: the engine with what the call asks of it, the document at its
// caret, what goes to standard error, and how it ends.
#pragma once

#include <string>

#include "cli/Arguments.h"
#include "cli/Engine.h"
#include "cli/Failure.h"
#include "cli/Place.h"

namespace caretwell {

class TRun {
public:
    explicit TRun(const TArguments& arguments, TDialogAnswers::TAsk ask = {});
    /// The same with a schema folder of the command's own choice.
    TRun(const TArguments& arguments, std::string schemaFolder, TDialogAnswers::TAsk ask);

    TEngine& Engine() { return FEngine; }
    /// Opens the place's text with the caret there. Raises TFailure without a schema folder.
    TDocument& Open(TPlace place);
    TDocument& Open(TSource source);
    /// Opens the list as the call asks: as the user, or as the trigger key given.
    void OpenList(TDocument& document);

    /// What nothing being offered means: the failure that is the reason of it.
    TFailure ExplainNothing(TDocument& document);
    /// Raises TFailure if the document's schema could not be read.
    void CheckSchema(TDocument& document);

private:
    void CheckFolder();
    void Echo(const TMessage& message);
    std::optional<TFailure> FindMissing(TDocument& document);
    std::string SchemaOf(INibCodeInsightManager& manager);

    const TArguments& FArguments;
    bool FIsSchemaMissing = false;
    TEngine FEngine;
};

/// A message of the engine, as "Error: loose.dtd:12: text".
std::string MessageLine(const TMessage& message, const std::string& schemaFolder);
/// Why a file or folder cannot be read; empty if it can.
std::string WhyUnreadable(const std::string& path);
/// One line on standard error.
void WriteError(std::string_view line);
/// Raises TFailure if standard output takes no more.
void WriteOutput(std::string_view text);

}  // namespace caretwell
