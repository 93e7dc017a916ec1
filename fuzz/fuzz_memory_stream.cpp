// Runs arbitrary sequences of writes, reads, moves and size changes on both
// memory stream files (a growable one and one over a lent block) and on a
// std::string model of each; they must agree after every operation.
//
// Input: the growth step, then operations of three bytes each: the kind,
// an argument and a base.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "zu/stream/zuFixedMemoryStreamFile.h"
#include "zu/stream/zuMemoryStreamFile.h"

namespace {

void check(bool condition) {
  if (!condition) __builtin_trap();
}

template <class File>
void run(File& file, std::string model, char** lent, const uint8_t* data, size_t size) {
  std::size_t position = 0;
  char buffer[256];
  for (size_t at = 0; at + 3 <= size; at += 3) {
    const unsigned argument = data[at + 1];
    const auto base = static_cast<zuFilePosition::PositionBase>(data[at + 2] % 3);
    const long from = base == zuFilePosition::eStart     ? 0
                      : base == zuFilePosition::eCurrent ? long(position)
                                                         : long(model.size());
    switch (data[at] % 5) {
      case 0: {
        const unsigned count = std::min<unsigned>(argument, size - at);
        check(file.Write(data + at, count) == count);
        model.replace(position, std::min<std::size_t>(count, model.size() - position),
                      reinterpret_cast<const char*>(data + at), count);
        position += count;
        break;
      }
      case 1: {
        const unsigned got = file.Read(buffer, argument);
        check(got == std::min<std::size_t>(argument, model.size() - position));
        check(model.compare(position, got, buffer, got) == 0);
        position += got;
        break;
      }
      case 2: {
        const long offset = long(argument) - 128;
        file.SetPosition(zuFilePosition(offset, base));
        position = std::clamp<long>(from + offset, 0, long(model.size()));
        break;
      }
      case 3: {
        const long length = std::max<long>(0, from + long(argument) - 128);
        file.ChangeSize(zuFilePosition(long(argument) - 128, base));
        model.resize(length, '\0');
        position = std::min<std::size_t>(position, length);
        break;
      }
      default: {
        const zuString text = file.toString();
        check(std::string(text, text.Length()) == model);
      }
    }
    check(file.GetPosition().GetOffset() == long(position));
    check(file.Length() == model.size());
    check((file.AtEof() != 0) == (position == model.size()));
    check(model.compare(0, model.size(), static_cast<const char*>(file), model.size()) == 0);
    if (lent != nullptr) check(*lent == static_cast<const char*>(file));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  const unsigned step = data[0];
  {
    zuMemoryStreamFile file(0, zuFileMode::eReadWrite, step / 2, step, 0);
    run(file, std::string(), nullptr, data + 1, size - 1);
  }
  char* lent = new char[step + 1]();
  {
    zuFixedMemoryStreamFile file(&lent, step + 1, step, ~0UL, 0, zuFileMode::eReadWrite);
    run(file, std::string(step + 1, '\0'), &lent, data + 1, size - 1);
  }
  delete[] lent;
  return 0;
}
