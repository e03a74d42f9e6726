#include "schema/XMLSchemaFile.h"

#include <algorithm>
#include <fstream>

#include "host/Platform.h"

namespace caretwell {
namespace {

// Comments and instructions are kept because TXSDReader looks at nodes of any kind.
constexpr unsigned int ParseOptions = pugi::parse_default | pugi::parse_comments | pugi::parse_pi;

size_t CountWords(std::string_view text, std::string_view word) {
    size_t count = 0;
    for (size_t at = text.find(word); at != text.npos; at = text.find(word, at + word.size())) ++count;
    return count;
}

}  // namespace

void TXMLFile::ReadText(const std::string& fileName) {
    // A device or a pipe would never end; a folder opens and does not read.
    if (!GetPlatform().FileExists(fileName)) throw EXMLFileError("The file cannot be found", 0);
    std::ifstream file(fileName, std::ios::binary | std::ios::ate);
    if (!file) throw EXMLFileError("The file cannot be read", 0);
    auto size = static_cast<size_t>(std::max<std::streamoff>(file.tellg(), 0));
    FIsCut = size > MaxSize;
    FSize = std::min(size, MaxSize);
    FText = std::make_unique_for_overwrite<char[]>(FSize + 1);
    file.seekg(0);
    file.read(FText.get(), static_cast<std::streamsize>(FSize));
    FSize = static_cast<size_t>(file.gcount());
    FNamespaceWords = CountWords({FText.get(), FSize}, "xmlns");
}

void TXMLFile::Load(const std::string& fileName) {
    ReadText(fileName);
    auto result = FDocument.load_buffer_inplace(FText.get(), FSize, ParseOptions);
    if (result || (FIsCut && GetRoot())) return;
    throw EXMLFileError(result.description(), GetLineOfOffset(fileName, result.offset));
}

int32_t GetLineOfOffset(const std::string& fileName, ptrdiff_t offset) {
    std::ifstream file(fileName, std::ios::binary);
    if (!file || offset < 0) return 0;
    int32_t line = 1;
    char block[4096];
    while (offset > 0) {
        file.read(block, std::min<std::streamsize>(offset, sizeof block));
        std::streamsize count = file.gcount();
        if (count <= 0) break;
        line += static_cast<int32_t>(std::count(block, block + count, '\n'));
        offset -= count;
    }
    return line;
}

}  // namespace caretwell
