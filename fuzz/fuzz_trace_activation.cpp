// Applies arbitrary text as a trace activation, then asks for the levels of
// the names it held and lists the known traces.
//
// Input: the text up to the first NUL byte. Checks that a name's answer
// never grows with the level asked, and that the lists of known names end
// without a line feed.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "zu/core/zuString.h"
#include "zu/runtime/internal/zuTraceRegistry.h"
#include "zu/runtime/zuTrace.h"
#include "zu/runtime/zuTraceHandler.h"

namespace {

zuTrace gLayout("layout", 16479);
zuTrace gRender("render", 16984);

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const char* bytes = reinterpret_cast<const char*>(data);
  const std::string text(bytes, strnlen(bytes, size));
  zuTraceHandler handler;
  handler.activate(zuString(text.c_str()));

  // Each run of bytes between ASCII blanks, and its part before a ":".
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t end = text.find_first_of(" \t\n", start);
    if (end == std::string::npos) end = text.size();
    const std::string token = text.substr(start, end - start);
    start = end + 1;
    const std::string name = token.substr(0, token.find(':'));
    const zuString asked(name.c_str());
    int previous = 1;
    for (unsigned int level : {0u, 1u, 2u, 100u, 4294967295u}) {
      const int active = handler.isActive(asked, level);
      if (active > previous) __builtin_trap();
      previous = active;
    }
  }
  for (int withLevels : {0, 1}) {
    const zuString known = handler.dumpAvailable(withLevels);
    if (known.Length() != 0 && known.LastChar() == '\n') __builtin_trap();
  }
  // Activated names are remembered for the life of the process; the fuzzer
  // makes millions of them, so they are forgotten after each input.
  zu::internal::TraceRegistry::instance().forgetActivatedNames();
  zuTraceHandler::timingTraceEnabled(0);
  return 0;
}
