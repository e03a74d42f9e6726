// Other clients watch a parse as it goes: they are told of every element before the
// caret, and may vote to stop.
#include <algorithm>

#include "parser/MLParser.h"
#include "tagmodel/DocumentNodes.h"

namespace caretwell {

void TMLParser::AddCallback(IRefCounted* observer) {
    auto callback = QueryAs<INibMLElementCallback>(observer);
    if (callback && std::find(FCallbacks.begin(), FCallbacks.end(), callback) == FCallbacks.end())
        FCallbacks.push_back(std::move(callback));
}

void TMLParser::RemoveCallback(IRefCounted* observer) {
    if (auto callback = QueryAs<INibMLElementCallback>(observer)) std::erase(FCallbacks, callback);
}

void TMLParser::CallbacksInvalidate() {
    auto callbacks = FCallbacks;
    for (auto& callback : callbacks) callback->Invalidate();
}

// A parse stops early only when every observer asks for it in the same call.
void TMLParser::Tell(INibMLMarkupPos* element, TTagType type, int32_t offsetStart, int32_t offsetEnd) {
    // The end of a directive that the schema does not have, for one, speaks of no element.
    if (FCallbacks.empty() || !element) return;
    size_t votes = 0;
    auto callbacks = FCallbacks;
    for (auto& callback : callbacks) {
        bool stop = false;
        callback->ElementParsed(this, element, type, offsetStart, offsetEnd, stop);
        if (stop) ++votes;
    }
    // A later element of the same turn takes no vote back.
    FScan.HasStopped |= votes == callbacks.size();
}

// ---- text, which is put together only for observers

/// Text begins at the position, as far as it lies before the caret.
void TMLParser::StartText() {
    if (!IsObserved() || !IsBeforeCaret(FPosition - 1)) return;
    FScan.TextOffset = Offset();
    FWindow.StartCapture(FPosition);
}

/// Tells of the text up to the position. Between two tags there may be none; at the end of the
/// document observers hear that its text is over in any case.
void TMLParser::ReportText(int32_t offsetEnd) {
    if (!IsObserved()) return;
    std::string text = FWindow.TakeCapture(FPosition);
    if (text.empty() && !IsAtEnd()) return;
    auto node = MakeRef<TMLText>();
    node->SetOffsetStart(FScan.TextOffset);
    node->SetOffsetEnd(offsetEnd);
    node->SetText(ToUtf16(text));
    Callback(node.Get(), ttText, FScan.TextOffset, offsetEnd);
}

}  // namespace caretwell
