// Where exceptions stop: no operation of the manager lets one reach the host. A parse
// may raise (a free XML document whose schema is malformed, an observer, a host that
// fails); what it says goes to the message view instead.
#pragma once

#include <exception>

#include "host/EngineCall.h"
#include "schema/XMLSchema.h"
#include "symbols/MLSymbolManager.h"

namespace caretwell {

/// Runs the action on the main thread; a call from any other thread is refused, and one
/// for a manager that the package has left behind when it ended.
template <class TAction>
void Guarded(TMLSymbolManager& symbols, TAction action) noexcept {
    try {
        TEngineCall call;
        if (!call.IsAllowed() || symbols.IsRetired()) return;
        try {
            action();
        } catch (const EXMLSchemaError& problem) {
            symbols.Error(problem.FFileName, problem.what(), "Failure", problem.FLine, 0);
        } catch (const std::exception& problem) {
            symbols.Error(symbols.GetSchemaFile(), problem.what(), "Failure", 0, 0);
        }
    } catch (...) {
        // Even the message could not be delivered: there is nobody to tell.
    }
}

}  // namespace caretwell
