// What leaves the library. A shared build hides every name that is not marked here, so
// that an editor may load the engine beside anything else, and the inside may change.
#pragma once

/// Marks what a host may link against. Interfaces need no mark: they are all virtual.
#define CARETWELL_API __attribute__((visibility("default")))
