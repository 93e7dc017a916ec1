#include "zu/core/zuExResourceFailure.h"

#include "zu/core/zuExErrItem.h"

zuExResourceFailure::zuExResourceFailure(const zuString& missingFile) : missingFile_(missingFile) {}

zuExResourceFailure::~zuExResourceFailure() = default;

void zuExResourceFailure::GetMissingFile(zuString& missingFile) const {
  missingFile = missingFile_;
}

unsigned int zuExResourceFailure::Count() const {
  return 1;
}

const zuExErrItem& zuExResourceFailure::operator[](unsigned int) const {
  // One item per thread: its text is rewritten here, and a string belongs to
  // the thread that fills it.
  thread_local zuExErrItem missingCatalogue;
  zuString text("Unable to locate resource file: ");
  text += missingFile_;
  missingCatalogue.Text(text);
  return missingCatalogue;
}
