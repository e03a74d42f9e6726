#include "cli/Json.h"

namespace caretwell {

TJson JsonOf(TLinePlace place) { return {{"line", place.Line}, {"column", place.Column}}; }

std::string JsonLine(const TJson& json) {
    return json.dump(-1, ' ', false, TJson::error_handler_t::replace) + "\n";
}

}  // namespace caretwell
