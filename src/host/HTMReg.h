// The package: it starts, puts both managers into the host's registry, takes them out
// again and ends.
//
//     SetTarnwellIDEServices(services); SetGlobalKibitzManager(&registry);
//     Initialize();  IDERegister();   ...work...   Finalize();
//
// It may be loaded, registered and unloaded any number of times in one process.
#pragma once

namespace caretwell {

/// Runs the start code of the units: editors and file kinds are registered, nothing is
/// read. A second call without a Finalize between does nothing.
void Initialize();

/// Makes both managers (css.xml is read here, markup schemas at the first parse that
/// asks for them) and registers them with the host. Called once, behind Initialize; a
/// host without a registry gets managers that it can still ask for by their functions.
void IDERegister();

/// Runs the end code of the units, in the reverse order. The host's interfaces are still
/// there, and are not used afterwards.
void Finalize();

}  // namespace caretwell
