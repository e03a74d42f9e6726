// The two roots by which the engine reaches its host, and the calls by which the host
// reaches the engine.
#include "host/Nibapi.h"

#include "host/EngineCall.h"
#include "host/Platform.h"

namespace caretwell {
namespace {

TRef<IRefCounted>& Services() {
    static TRef<IRefCounted> services;
    return services;
}
INibKibitzRegistry* Registry = nullptr;
thread_local int CallsUnderWay = 0;

}  // namespace

IRefCounted* TarnwellIDEServices() { return Services().Get(); }
void SetTarnwellIDEServices(TRef<IRefCounted> services) { Services() = std::move(services); }

// Counted before the host is asked for its thread: it may answer by calling the engine.
TEngineCall::TEngineCall() noexcept : FIsAllowed(false) {
    ++CallsUnderWay;
    try {
        FIsAllowed = GetPlatform().IsMainThread();
    } catch (...) {
        // A host that cannot tell its threads apart gets no answer.
    }
}
TEngineCall::~TEngineCall() { --CallsUnderWay; }
bool TEngineCall::IsUnderWay() { return CallsUnderWay > 0; }

INibKibitzRegistry* GlobalKibitzManager() { return Registry; }
void SetGlobalKibitzManager(INibKibitzRegistry* registry) { Registry = registry; }

}  // namespace caretwell
