// One call of the host into the engine, from its entry to its return.
//
// While it lasts the engine calls the host for text, services and dialogs, and a host
// may answer by calling the engine again. Most of that is fine; what would pull the
// ground away from under the outer call (Finalize) asks here and is refused.
#pragma once

namespace caretwell {

class TEngineCall {
public:
    TEngineCall() noexcept;
    ~TEngineCall();
    TEngineCall(const TEngineCall&) = delete;
    TEngineCall& operator=(const TEngineCall&) = delete;

    /// False off the main thread, where the engine does nothing.
    bool IsAllowed() const { return FIsAllowed; }
    /// True between entry and return of any call on this thread.
    static bool IsUnderWay();

private:
    bool FIsAllowed;
};

}  // namespace caretwell
