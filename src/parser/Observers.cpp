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
    FStop = votes == callbacks.size();
}

// ---- text, which is put together only for observers

void TMLParser::CollectText() {
    if (IsObserved() && FTextStart && FTextStart < FPosition) FText.append(FTextStart, FPosition);
    FTextStart = FPosition;
}

void TMLParser::StartText(int32_t offset) {
    FScan.TextOffset = offset;
    FText.clear();
    FTextStart = FPosition;
}

void TMLParser::ReportText(int32_t offsetEnd) {
    if (!IsObserved()) return;
    auto node = MakeRef<TMLText>();
    node->SetOffsetStart(FScan.TextOffset);
    node->SetOffsetEnd(offsetEnd);
    node->SetText(ToUtf16(FText));
    FText.clear();
    Callback(node.Get(), ttText, FScan.TextOffset, offsetEnd);
}

// Nothing lies before a caret on line 0, so the scan only finds the doctype.
void TMLParser::BootStrapDTD(TRef<IMLBufferProducer> producer) {
    Parse(TNibEditPos{0, 0}, std::move(producer), nullptr);
    FSymbolManager.SetSchemaFile(FSchemaFile);
}

}  // namespace caretwell
