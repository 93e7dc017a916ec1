#include "zu/core/zuFormat.h"

#include <locale.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

#include "zu/core/internal/zuMessageLookup.h"

namespace {

// Numbers use "." as the decimal point whatever locale the process has set,
// so they are printed under the "C" locale, switched for this thread only.
class CNumericScope {
 public:
  CNumericScope() : previous_(cLocale() ? uselocale(cLocale()) : nullptr) {}
  ~CNumericScope() {
    if (previous_) uselocale(previous_);
  }
  CNumericScope(const CNumericScope&) = delete;
  CNumericScope& operator=(const CNumericScope&) = delete;

 private:
  static locale_t cLocale() {
    static const locale_t kC = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    return kC;
  }
  locale_t previous_;
};

// Prints one value with a printf format holding one conversion. The buffer is
// sized from the printed length, which the clamped width and precision bound.
template <typename T>
std::string printValue(const std::string& format, T value) {
  CNumericScope numericScope;
  const int length = std::snprintf(nullptr, 0, format.c_str(), value);
  if (length <= 0) return std::string();
  std::string printed(static_cast<size_t>(length), '\0');
  std::snprintf(printed.data(), printed.size() + 1, format.c_str(), value);
  return printed;
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

// Adds one decimal digit to a width or precision, saturating just past the
// maximum so that long digit runs cannot overflow.
unsigned int addDigit(unsigned int value, char digit) {
  const unsigned int grown = value * 10 + static_cast<unsigned int>(digit - '0');
  return grown > zuFormat::kMaxWidth ? zuFormat::kMaxWidth + 1 : grown;
}

}  // namespace

// One conversion of the template: the width and precision written after the
// "%" and the conversion letter (0 when the template ended first).
struct zuFormat::Conversion {
  bool zeroPad = false;
  bool hasWidth = false;
  bool hasPrecision = false;
  unsigned int width = 0;
  unsigned int precision = 0;
  char letter = 0;

  // The printf format for this conversion followed by `lengthAndType`
  // ("ld", "lu", "lX" or "lf").
  std::string PrintfFormat(const char* lengthAndType) const {
    std::string format = "%";
    if (zeroPad) format += '0';
    if (hasWidth) format += std::to_string(std::min(width, kMaxWidth));
    if (hasPrecision) format += '.' + std::to_string(std::min(precision, kMaxWidth));
    return format + lengthAndType;
  }
};

zuFormat::zuFormat(unsigned short id) : id_(id), scanPos_(0) {
  zu::internal::loadMessage(id, template_);
  CopyLiteralText();
}

zuFormat::zuFormat(const zuString& templateText) : id_(0), template_(templateText), scanPos_(0) {
  CopyLiteralText();
}

zuFormat::zuFormat(const zuFormat& other) = default;

zuFormat& zuFormat::operator=(const zuFormat& other) = default;

zuFormat::~zuFormat() = default;

zuFormat& zuFormat::operator<<(char value) {
  const Conversion conversion = ReadConversion();
  if (conversion.letter == 'd' || conversion.letter == 'x') {
    AppendSigned(value, conversion);
  } else {
    AppendCharacter(value);
  }
  CopyLiteralText();
  return *this;
}

zuFormat& zuFormat::operator<<(unsigned char value) {
  const Conversion conversion = ReadConversion();
  if (conversion.letter == 'd' || conversion.letter == 'x') {
    AppendUnsigned(value, conversion);
  } else {
    AppendCharacter(static_cast<char>(value));
  }
  CopyLiteralText();
  return *this;
}

zuFormat& zuFormat::operator<<(const unsigned char* text) {
  const Conversion conversion = ReadConversion();
  if (conversion.letter == 'd' || conversion.letter == 'x') {
    AppendUnsigned(static_cast<unsigned long>(reinterpret_cast<uintptr_t>(text)), conversion);
  } else {
    AppendParameter(zuString(text ? reinterpret_cast<const char*>(text) : ""));
  }
  CopyLiteralText();
  return *this;
}

zuFormat& zuFormat::operator<<(const char* text) {
  return *this << reinterpret_cast<const unsigned char*>(text);
}

zuFormat& zuFormat::operator<<(short value) {
  return *this << static_cast<long>(value);
}

zuFormat& zuFormat::operator<<(unsigned short value) {
  return *this << static_cast<unsigned long>(value);
}

zuFormat& zuFormat::operator<<(int value) {
  return *this << static_cast<long>(value);
}

zuFormat& zuFormat::operator<<(unsigned int value) {
  return *this << static_cast<unsigned long>(value);
}

zuFormat& zuFormat::operator<<(long value) {
  const Conversion conversion = ReadConversion();
  if (conversion.letter == 'c') {
    AppendCharacter(static_cast<char>(value & 0xFF));
  } else {
    AppendSigned(value, conversion);
  }
  CopyLiteralText();
  return *this;
}

zuFormat& zuFormat::operator<<(unsigned long value) {
  const Conversion conversion = ReadConversion();
  if (conversion.letter == 'c') {
    AppendCharacter(static_cast<char>(value & 0xFF));
  } else {
    AppendUnsigned(value, conversion);
  }
  CopyLiteralText();
  return *this;
}

zuFormat& zuFormat::operator<<(const float& value) {
  return *this << static_cast<double>(value);
}

zuFormat& zuFormat::operator<<(const double& value) {
  const Conversion conversion = ReadConversion();
  AppendParameter(zuString(printValue(conversion.PrintfFormat("lf"), value).c_str()));
  CopyLiteralText();
  return *this;
}

zuFormat& zuFormat::operator<<(const zuString& text) {
  ReadConversion();
  AppendParameter(text);
  CopyLiteralText();
  return *this;
}

zuFormat& zuFormat::operator<<(zuAtomStore* atom) {
  return *this << zuString(atom);
}

char* zuFormat::GetAllocdChar() const {
  const unsigned int length = result_.Length();
  char* copy = new char[length + 1];
  std::memcpy(copy, static_cast<const char*>(result_), length);
  copy[length] = '\0';
  return copy;
}

const zuString& zuFormat::GetParm(unsigned int index) const {
  return index < parameters_.size() ? parameters_[index] : zuString::EmptyString();
}

unsigned int zuFormat::GetParmCount() const {
  return static_cast<unsigned int>(parameters_.size());
}

// Copies literal text from the scan position up to the next conversion,
// writing "%%" as "%". A "%" that ends the template writes nothing. Runs are
// copied as pieces of the template, so their bytes are never reinterpreted.
void zuFormat::CopyLiteralText() {
  const char* text = template_;
  const uint32_t length = template_.Length();
  uint32_t runStart = scanPos_;
  while (scanPos_ < length) {
    if (text[scanPos_] != '%') {
      ++scanPos_;
      continue;
    }
    const bool endsTemplate = scanPos_ + 1 == length;
    const bool percentPair = !endsTemplate && text[scanPos_ + 1] == '%';
    if (!endsTemplate && !percentPair) break;
    AppendTemplateRun(runStart, percentPair ? scanPos_ + 1 : scanPos_);
    scanPos_ += percentPair ? 2 : 1;
    runStart = scanPos_;
  }
  AppendTemplateRun(runStart, scanPos_);
}

void zuFormat::AppendTemplateRun(uint32_t start, uint32_t end) {
  if (end > start) result_ += template_.Substring(start, end - start);
}

// Reads the conversion at the scan position and moves past it. Past the last
// conversion the result is the bare "%" with letter 0. The conversion text is every
// digit and "." after the "%": a leading "0" asks for zero padding, the digits
// before the first "." are the width, those after it the precision, and any
// further "." ends what is read of the precision.
zuFormat::Conversion zuFormat::ReadConversion() {
  Conversion conversion;
  const char* text = template_;
  const uint32_t length = template_.Length();
  if (scanPos_ >= length) return conversion;

  uint32_t pos = scanPos_ + 1;
  bool precisionEnded = false;
  for (; pos < length && (isDigit(text[pos]) || text[pos] == '.'); ++pos) {
    const char c = text[pos];
    if (c == '.') {
      precisionEnded = conversion.hasPrecision;
      conversion.hasPrecision = true;
    } else if (conversion.hasPrecision) {
      if (!precisionEnded) conversion.precision = addDigit(conversion.precision, c);
    } else if (c == '0' && !conversion.hasWidth) {
      conversion.zeroPad = true;
    } else {
      conversion.hasWidth = true;
      conversion.width = addDigit(conversion.width, c);
    }
  }
  if (pos < length && text[pos] == 'l') ++pos;
  if (pos < length) conversion.letter = text[pos++];
  scanPos_ = pos;
  return conversion;
}

void zuFormat::AppendParameter(const zuString& text) {
  result_ += text;
  parameters_.push_back(text);
}

// A character written as itself is part of the result but not a parameter.
void zuFormat::AppendCharacter(char character) {
  result_ += character;
}

// Only the letter "x" selects hexadecimal, printed with upper-case digits.
void zuFormat::AppendSigned(long value, const Conversion& conversion) {
  const char* lengthAndType = conversion.letter == 'x' ? "lX" : "ld";
  AppendParameter(zuString(printValue(conversion.PrintfFormat(lengthAndType), value).c_str()));
}

void zuFormat::AppendUnsigned(unsigned long value, const Conversion& conversion) {
  const char* lengthAndType = conversion.letter == 'x' ? "lX" : "lu";
  AppendParameter(zuString(printValue(conversion.PrintfFormat(lengthAndType), value).c_str()));
}
