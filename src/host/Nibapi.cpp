// The two roots by which the engine reaches its host.
#include "host/Nibapi.h"

namespace caretwell {
namespace {

TRef<IRefCounted>& Services() {
    static TRef<IRefCounted> services;
    return services;
}
INibKibitzRegistry* Registry = nullptr;

}  // namespace

IRefCounted* TarnwellIDEServices() { return Services().Get(); }
void SetTarnwellIDEServices(TRef<IRefCounted> services) { Services() = std::move(services); }

INibKibitzRegistry* GlobalKibitzManager() { return Registry; }
void SetGlobalKibitzManager(INibKibitzRegistry* registry) { Registry = registry; }

}  // namespace caretwell
