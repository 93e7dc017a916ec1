// Splitting an ISO 8601 date-time text at its "T".
#pragma once

#include "zu/core/zuString.h"

namespace zu::internal {

// The text before the first "T" (all of it when there is none), trimmed of
// white space at both ends.
zuString isoPartBeforeT(const zuString& text);
// The text after the first "T" (all of it when there is none), trimmed.
zuString isoPartAfterT(const zuString& text);

}  // namespace zu::internal
