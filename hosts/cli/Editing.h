// What choose and type share: the text that results, printed or written in place.
#pragma once

#include "cli/Run.h"

namespace caretwell {

/// A command that changes a text.
class TEditing {
public:
    TEditing(const TArguments& arguments, TPlace place, TDialogAnswers::TAsk ask = {});

    TRun& Run() { return FRun; }
    TDocument& Document() { return FDocument; }
    TEditorDriver& Driver() { return FDocument.Driver(); }
    /// Writes the file if the call says so, and prints what it asks for.
    void Finish();

private:
    void WriteFile();

    const TArguments& FArguments;
    TRun FRun;
    TDocument& FDocument;
};

}  // namespace caretwell
