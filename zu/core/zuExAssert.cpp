#include "zu/core/zuExAssert.h"

#include "zu/core/zuFormat.h"

namespace {

const char* orEmpty(const char* text) {
  return text ? text : "";
}

}  // namespace

zuExAssert::zuExAssert(const char* expression, const char* file, int line, const char* message)
    : items_{zuExErrItem(0, zuString("Internal error: assertion failure")),
             zuExErrItem(0, zuString(orEmpty(expression))),
             zuExErrItem(0, (zuFormat(zuString("At file: %s, line: %d")) << orEmpty(file) << line)
                                .GetString()),
             zuExErrItem(0, zuString(orEmpty(message)))},
      hasMessage_(message != nullptr) {}

zuExAssert::~zuExAssert() = default;

unsigned int zuExAssert::Count() const {
  return hasMessage_ ? 4 : 3;
}

const zuExErrItem& zuExAssert::operator[](unsigned int index) const {
  return items_[index < kItemCount - 1 ? index : kItemCount - 1];
}

void zuExAssertFailure(const char* expression, const char* file, int line, const char* message) {
  throw zuExAssert(expression, file, line, message);
}
