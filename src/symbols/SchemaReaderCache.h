// Readers of schema files, one per file for the life of the process, however often
// documents change schemas. One lock guards all caches, the first read of a file included.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "markup/Text.h"

namespace caretwell {

std::mutex& SchemaReaderLock();

/// Names compare without regard to case.
struct TFileNameLess {
    bool operator()(const std::string& a, const std::string& b) const {
        return CompareText(std::string_view(a), std::string_view(b)) < 0;
    }
};

/// Owns its readers. Use it with SchemaReaderLock held.
template <class TReader>
class TSchemaReaderCache {
public:
    /// The reader of a file; null if it was not read yet.
    TReader* Find(const std::string& fileName) {
        auto row = FReaders.find(fileName);
        return row == FReaders.end() ? nullptr : row->second.get();
    }
    TReader& Add(const std::string& fileName, std::unique_ptr<TReader> reader) {
        return *(FReaders[fileName] = std::move(reader));
    }
    void Clear() { FReaders.clear(); }

private:
    std::map<std::string, std::unique_ptr<TReader>, TFileNameLess> FReaders;
};

/// Frees all cached readers (defined by the loaders); called at shut-down.
void FreeDTDReaders();
void FreeXSDReaders();

class TDTDParser;
/// The reader that a table was made from; null if the file was not read.
const TDTDParser* FindDTDReader(const std::string& fileName);
/// Changes when readers are freed.
uint64_t GetDTDReaderGeneration();

}  // namespace caretwell
