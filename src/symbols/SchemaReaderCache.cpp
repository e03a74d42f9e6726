#include "symbols/SchemaReaderCache.h"

namespace caretwell {

std::mutex& SchemaReaderLock() {
    static std::mutex lock;
    return lock;
}

}  // namespace caretwell
