// Reads an XML file into a document of the XML library, with bounds.
//
// Both readers of XML schemas start here, so a file that is missing, malformed, huge
// or no text at all is judged in one place.
#pragma once

#include <cstdint>
#include <memory>
#include <pugixml.hpp>
#include <stdexcept>
#include <string>

namespace caretwell {

/// A file that could not be read as XML. what() is a sentence for the user.
class EXMLFileError : public std::runtime_error {
public:
    EXMLFileError(const std::string& message, int32_t line) : std::runtime_error(message), FLine(line) {}
    int32_t FLine;  ///< from 1; 0 if no line is to blame
};

/// A document and the text that it points into.
class TXMLFile {
public:
    /// A file is read up to this size in bytes; of a larger one the beginning is used.
    static constexpr size_t MaxSize = size_t{16} << 20;

    /// Raises EXMLFileError on a file that is no regular file or not well formed. After
    /// that GetRoot gives what stood before the error. A file that was cut at MaxSize
    /// is never called malformed.
    void Load(const std::string& fileName);

    /// The root element; null if there is none.
    pugi::xml_node GetRoot() const { return FDocument.document_element(); }
    /// True if the file was larger than MaxSize.
    bool IsCut() const { return FIsCut; }
    size_t GetSize() const { return FSize; }
    /// How often the word "xmlns" stands in the text of the file.
    size_t GetNamespaceWords() const { return FNamespaceWords; }

private:
    void ReadText(const std::string& fileName);

    std::unique_ptr<char[]> FText;
    size_t FSize = 0;
    size_t FNamespaceWords = 0;
    bool FIsCut = false;
    pugi::xml_document FDocument;
};

/// The line, from 1, of a byte offset in a file; 0 if the file cannot be read again.
/// The parsed text is no longer what stands in the file, so messages come here.
int32_t GetLineOfOffset(const std::string& fileName, ptrdiff_t offset);

}  // namespace caretwell
