// The package: it starts, puts both managers into the host's registry, takes them out
// again and ends.
//
//     SetTarnwellIDEServices(services); SetGlobalKibitzManager(&registry);
//     Initialize();  IDERegister();   ...work...   Finalize();
//
// All three belong to the main thread; a call from another one does nothing.
// It may be loaded, registered and unloaded any number of times in one process.
#pragma once

#include "caretwell/host/Export.h"

namespace caretwell {

/// Runs the start code of the units: editors and file kinds are registered, nothing is
/// read. A second call without a Finalize between does nothing.
CARETWELL_API void Initialize();

/// Makes both managers (css.xml is read here, markup schemas at the first parse that
/// asks for them) and registers them with the host. Called once, after Initialize: before
/// it, or a second time, the call does nothing. A host without a registry gets managers
/// that it can still ask for by their functions.
CARETWELL_API void IDERegister();

/// Runs the end code of the units, in the reverse order. The host's interfaces are still
/// there, and are not used afterwards. A manager or an element that the host still holds
/// lives on as an empty one: no lists, no files handled. From inside a call of the engine
/// (Done, a dialog, an observer) it is refused with a message.
CARETWELL_API void Finalize();

}  // namespace caretwell
