// zuExAssert: thrown when an internal assertion of the library fails.
//
// Carries three or four items: "Internal error: assertion failure", the
// asserted expression, "At file: <file>, line: <line>" and, when one was
// given, an extra message.
//
//   zuExAssertFailure("count <= capacity_", __FILE__, __LINE__, nullptr);
//
// The items are texts and need no catalogue.
#pragma once

#include "zu/core/zuExErrItem.h"
#include "zu/core/zuException.h"
#include "zu/core/zuExport.h"

class ZU_EXPORT zuExAssert : public zuException {
 public:
  // Null texts count as empty; a null `message` means no fourth item.
  zuExAssert(const char* expression, const char* file, int line, const char* message);
  zuExAssert(const zuExAssert&) = default;
  zuExAssert& operator=(const zuExAssert&) = default;
  ~zuExAssert() override;

  // 4 when an extra message was given, else 3.
  unsigned int Count() const override;
  // Items 0 to 2 by index; any other index gives item 3 (the extra message,
  // empty when none was given).
  const zuExErrItem& operator[](unsigned int index) const override;

 private:
  static constexpr unsigned int kItemCount = 4;

  zuExErrItem items_[kItemCount];
  int hasMessage_;
};

// Builds and throws a zuExAssert; `message` may be null.
[[noreturn]] ZU_EXPORT void zuExAssertFailure(const char* expression, const char* file, int line,
                                              const char* message);
