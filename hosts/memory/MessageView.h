// The message view: what the engine has to say about schema files, in order.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace caretwell {

struct TMessage {
    std::string FileName, Text;
    std::string Prefix;  ///< "Error", "Warning", "Hint", "Failure", "Code Completion"
    int32_t Line = 0, Column = 0;
};

class TMessageView {
public:
    /// A broken schema may have more to say than anyone reads: what comes after
    /// this many messages is counted and not kept.
    static constexpr size_t MostKept = 10000;

    void Clear() {
        FMessages.clear();
        FDropped = 0;
    }
    void Add(TMessage message) {
        if (FEcho) FEcho(message);
        if (FMessages.size() < MostKept) FMessages.push_back(std::move(message));
        else ++FDropped;
    }

    const std::vector<TMessage>& Messages() const { return FMessages; }
    size_t DroppedCount() const { return FDropped; }
    /// Called with each message as it comes.
    void SetEcho(std::function<void(const TMessage&)> echo) { FEcho = std::move(echo); }

private:
    std::vector<TMessage> FMessages;
    size_t FDropped = 0;
    std::function<void(const TMessage&)> FEcho;
};

}  // namespace caretwell
