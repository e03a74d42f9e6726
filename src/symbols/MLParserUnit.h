// What the markup unit does when the package starts and ends.
#pragma once

namespace caretwell {

/// Registers the attribute editors and the kinds of file with a schema of their own.
void StartMLParser();
/// Frees the cached schema readers, the editor registry and the mapper.
void EndMLParser();

}  // namespace caretwell
