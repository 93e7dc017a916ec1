// Streams arbitrary arguments through arbitrary templates of zuFormat and
// zuFormatPos, and through the exceptions that keep them.
//
// Input: the template up to the first NUL byte, then a sequence of arguments,
// each a kind byte followed by its bytes: a long, an unsigned long or a
// double (8 bytes each), a char (1 byte) or a text (a length byte, then up
// to that many bytes).
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

#include "zu/core/zuExErrItem.h"
#include "zu/core/zuException.h"
#include "zu/core/zuFormat.h"
#include "zu/core/zuFormatPos.h"

namespace {

class Input {
 public:
  Input(const uint8_t* data, size_t size) : data_(data), size_(size) {}

  bool Empty() const { return pos_ >= size_; }

  uint8_t Byte() { return Empty() ? 0 : data_[pos_++]; }

  template <typename T>
  T Value() {
    unsigned char bytes[sizeof(T)] = {};
    for (unsigned char& byte : bytes) byte = Byte();
    T value;
    std::memcpy(&value, bytes, sizeof(T));
    return value;
  }

  std::string Text(size_t maxLength) {
    std::string text;
    while (text.size() < maxLength && !Empty()) {
      const uint8_t byte = Byte();
      if (byte == 0) break;
      text += static_cast<char>(byte);
    }
    return text;
  }

 private:
  const uint8_t* data_;
  size_t size_;
  size_t pos_ = 0;
};

void readAll(const zuFormat& format) {
  const zuString& result = format.GetString();
  if (std::strlen(result) != result.Length()) __builtin_trap();
  for (unsigned int i = 0; i <= format.GetParmCount(); ++i) (void)format.GetParm(i).Length();
  const std::unique_ptr<char[]> copy(format.GetAllocdChar());
}

void readAll(const zuFormatPos& format) {
  (void)format.GetString().Length();
  for (unsigned int i = 0; i <= format.GetParmCount(); ++i) (void)format.GetParm(i).Length();
  const std::unique_ptr<char[]> copy(format.GetAllocdChar());
}

void readThrown(const zuFormat& format, const zuFormatPos& positional) {
  try {
    ZuExThrow(format);
  } catch (zuExFull& error) {
    for (unsigned int i = 0; i <= error[0].getParmCount(); ++i) (void)error[0].getParm(i);
    const std::unique_ptr<zuString> joined(error.String());
  }
  try {
    ZuExThrow(positional, 1);
  } catch (const zuExFull& error) {
    (void)error[0].getParm(0);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input input(data, size);
  const zuString templateText(input.Text(size).c_str());
  zuFormat format(templateText);
  zuFormatPos positional(templateText);

  constexpr int kMaxArguments = 64;
  for (int count = 0; count < kMaxArguments && !input.Empty(); ++count) {
    switch (input.Byte() % 5) {
      case 0: {
        const long value = input.Value<long>();
        format << value;
        positional << value;
        break;
      }
      case 1: {
        const unsigned long value = input.Value<unsigned long>();
        format << value;
        positional << static_cast<long long>(value);
        break;
      }
      case 2: {
        const double value = input.Value<double>();
        format << value;
        positional << value;
        break;
      }
      case 3: {
        const char value = static_cast<char>(input.Byte());
        format << value;
        positional << static_cast<short>(value);
        break;
      }
      default: {
        const std::string text = input.Text(input.Byte());
        format << text.c_str();
        positional << zuString(text.c_str());
        break;
      }
    }
  }
  readAll(format);
  readAll(positional);
  readThrown(format, positional);
  try {
    ZuExThrow(templateText);
  } catch (const zuExFull& error) {
    (void)error[0].Text().Length();
  }
  return 0;
}
