#include "zu/core/zuFormatPos.h"

#include <algorithm>
#include <cstring>

#include "zu/core/internal/zuMessageLookup.h"

namespace {

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

// Letters of the conversions that take the next placeholder number.
bool isSequenceLetter(char c) {
  return c != '\0' && std::strchr("dfusxX", c) != nullptr;
}

zuString loadTemplate(unsigned short id) {
  zuString templateText;
  zu::internal::loadMessage(id, templateText);
  return templateText;
}

// Integers keep the signed value of their low 32 bits, the range of the
// message arguments this class was made for.
zuString integerText(long long value) {
  zuString text;
  text.Number(static_cast<long>(static_cast<int32_t>(value)));
  return text;
}

}  // namespace

zuFormatPos::zuFormatPos(unsigned short id)
    : format_(RewriteTemplate(loadTemplate(id), placeholders_)), resolved_(0), id_(id) {}

zuFormatPos::zuFormatPos(const zuString& templateText)
    : format_(RewriteTemplate(templateText, placeholders_)), resolved_(0), id_(0) {}

zuFormatPos::zuFormatPos(unsigned short id, const zuString& argument) : zuFormatPos(id) {
  *this << argument;
}

zuFormatPos::zuFormatPos(const zuString& templateText, const zuString& argument)
    : zuFormatPos(templateText) {
  *this << argument;
}

zuFormatPos::zuFormatPos(unsigned short id, zuAtomStore* atom) : zuFormatPos(id) {
  *this << atom;
}

zuFormatPos::zuFormatPos(const zuString& templateText, zuAtomStore* atom)
    : zuFormatPos(templateText) {
  *this << atom;
}

zuFormatPos::zuFormatPos(const zuFormatPos& other) = default;

zuFormatPos& zuFormatPos::operator=(const zuFormatPos& other) = default;

zuFormatPos::~zuFormatPos() = default;

zuFormatPos& zuFormatPos::operator<<(const zuString& text) {
  StoreArgument(text);
  return *this;
}

zuFormatPos& zuFormatPos::operator<<(zuAtomStore* atom) {
  return *this << zuString(atom);
}

zuFormatPos& zuFormatPos::operator<<(const char* text) {
  StoreArgument(zuString(text ? text : ""));
  return *this;
}

zuFormatPos& zuFormatPos::operator<<(long value) {
  StoreArgument(integerText(value));
  return *this;
}

zuFormatPos& zuFormatPos::operator<<(long long value) {
  StoreArgument(integerText(value));
  return *this;
}

zuFormatPos& zuFormatPos::operator<<(int value) {
  return *this << static_cast<long>(value);
}

zuFormatPos& zuFormatPos::operator<<(short value) {
  return *this << static_cast<long>(value);
}

zuFormatPos& zuFormatPos::operator<<(unsigned short value) {
  return *this << static_cast<long>(value);
}

zuFormatPos& zuFormatPos::operator<<(const double& value) {
  zuString text;
  text.Number(value, 8, 0);
  StoreArgument(text);
  return *this;
}

zuFormatPos& zuFormatPos::operator<<(const float& value) {
  return *this << static_cast<double>(value);
}

const zuString& zuFormatPos::GetString() const {
  Resolve();
  return format_.GetString();
}

char* zuFormatPos::GetAllocdChar() const {
  Resolve();
  return format_.GetAllocdChar();
}

const zuString& zuFormatPos::GetParm(unsigned int index) const {
  Resolve();
  return format_.GetParm(index);
}

unsigned int zuFormatPos::GetParmCount() const {
  Resolve();
  return format_.GetParmCount();
}

// Records the placeholders in order of appearance and rewrites each as "%s":
// "%" and a digit is that number; "%" and a sequence letter (optionally after
// an "l") is the count of placeholders recorded before it. Any other "%" pair
// is kept for the zuFormat underneath.
zuString zuFormatPos::RewriteTemplate(const zuString& templateText,
                                      std::vector<uint32_t>& placeholders) {
  const char* text = templateText;
  const uint32_t length = templateText.Length();
  zuString rewritten;
  uint32_t runStart = 0;
  uint32_t pos = 0;
  while (pos < length) {
    if (text[pos] != '%' || pos + 1 == length) {
      ++pos;
      continue;
    }
    const char next = text[pos + 1];
    uint32_t placeholderLength = 2;
    if (isDigit(next)) {
      placeholders.push_back(static_cast<uint32_t>(next - '0'));
    } else if (isSequenceLetter(next)) {
      placeholders.push_back(static_cast<uint32_t>(placeholders.size()));
    } else if (next == 'l' && pos + 2 < length && isSequenceLetter(text[pos + 2])) {
      placeholders.push_back(static_cast<uint32_t>(placeholders.size()));
      placeholderLength = 3;
    } else {
      pos += 2;
      continue;
    }
    rewritten += templateText.Substring(runStart, pos - runStart);
    rewritten += "%s";
    pos += placeholderLength;
    runStart = pos;
  }
  rewritten += templateText.Substring(runStart, length - runStart);
  return rewritten;
}

void zuFormatPos::StoreArgument(const zuString& text) {
  arguments_.push_back(text);
  resolved_ = 0;
}

// Streams the stored arguments into the placeholders, numbering from the
// smallest number used. Both lists are emptied, so arguments that arrive
// later are never placed.
void zuFormatPos::Resolve() const {
  if (resolved_) return;
  if (!placeholders_.empty()) {
    const uint32_t first = *std::min_element(placeholders_.begin(), placeholders_.end());
    for (size_t placed = 0; placed < placeholders_.size(); ++placed) {
      const size_t index = placeholders_[placed] - first;
      if (index >= arguments_.size()) {
        for (; placed < placeholders_.size(); ++placed) format_ << zuString::EmptyString();
        break;
      }
      format_ << arguments_[index];
    }
  }
  placeholders_.clear();
  arguments_.clear();
  resolved_ = 1;
}
