// A folder of files for the time of the run: documents for other processes, and a schema
// folder that holds the shipped schemas with those of DocBook beside them.
#pragma once

#include <string>
#include <string_view>

namespace caretwell::bench {

/// The folder, made at the first call and removed at the end of the process.
const std::string& WorkFolder();
/// Writes a file of that folder; returns its path.
std::string WriteWorkFile(const std::string& name, std::string_view text);

/// A schema folder with docbook.xsd of the package docbook5-xml; empty if that is not installed.
std::string FolderWithDocBook();

}  // namespace caretwell::bench
