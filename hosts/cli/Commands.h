// The commands. Each one answers with the exit status, or raises TFailure.
#pragma once

#include "cli/Arguments.h"
#include "cli/Failure.h"

namespace caretwell {

TExitStatus RunComplete(const TArguments& arguments);
TExitStatus RunChoose(const TArguments& arguments);
TExitStatus RunType(const TArguments& arguments);
TExitStatus RunExplain(const TArguments& arguments);
TExitStatus RunEvents(const TArguments& arguments);
TExitStatus RunSchema(const TArguments& arguments);

}  // namespace caretwell
