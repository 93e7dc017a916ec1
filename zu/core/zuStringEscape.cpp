// XML and XHTML escaping of zuString.
#include "zu/core/zuString.h"

#include <cstring>

#include "zu/core/internal/zuCodePointSet.h"
#include "zu/core/zuException.h"

namespace {

// Appends "&#x" and the lower-case hexadecimal digits of `codePoint`, ";".
char* writeHexReference(char* out, unsigned int codePoint) {
  static const char kDigits[] = "0123456789abcdef";
  char digits[8];
  int count = 0;
  do {
    digits[count++] = kDigits[codePoint & 0xF];
    codePoint >>= 4;
  } while (codePoint != 0);
  std::memcpy(out, "&#x", 3);
  out += 3;
  while (count > 0) *out++ = digits[--count];
  *out++ = ';';
  return out;
}

int isXMLForbidden(unsigned int codePoint) {
  if (codePoint < 0x20) return codePoint != '\t' && codePoint != '\n' && codePoint != '\r';
  return (codePoint >= 0xD800 && codePoint <= 0xDFFF) || codePoint == 0xFFFE ||
         codePoint == 0xFFFF || codePoint > 0x10FFFF;
}

// How toXML writes one code point.
struct XMLEscape {
  enum Kind { kCopy, kDrop, kEntity, kHexReference } kind;
  const char* entity;
};

struct XMLRules {
  zuToXMLType type;
  const zuString& alsoEscape;
  unsigned int rangeLow;
  unsigned int rangeHigh;
  const zuString& neverEscape;

  int inNumericRange(unsigned int codePoint) const {
    if (rangeLow == 0 && rangeHigh == 0) return 0;
    if (rangeLow == 0) return codePoint <= rangeHigh;
    if (rangeHigh == 0) return codePoint >= rangeLow;
    return codePoint >= rangeLow && codePoint <= rangeHigh;
  }

  XMLEscape escapeOf(unsigned int codePoint) const {
    const bool attribute = type == zuXMLAttributeDQuote || type == zuXMLAttributeSQuote;
    if (zu::internal::codePointSetContains(neverEscape, codePoint))
      return {XMLEscape::kCopy, nullptr};
    if (isXMLForbidden(codePoint)) return {XMLEscape::kDrop, nullptr};
    switch (codePoint) {
      case '<':
        return {XMLEscape::kEntity, "&lt;"};
      case '&':
        return {XMLEscape::kEntity, "&amp;"};
      case '\r':
        return {XMLEscape::kEntity, "&#xD;"};
      case '>':
        if (type == zuXMLText) return {XMLEscape::kEntity, "&gt;"};
        break;
      case '"':
        if (type == zuXMLAttributeDQuote) return {XMLEscape::kEntity, "&quot;"};
        break;
      case '\'':
        if (type == zuXMLAttributeSQuote) return {XMLEscape::kEntity, "&apos;"};
        break;
      case '\n':
        if (attribute) return {XMLEscape::kEntity, "&#xA;"};
        break;
      case '\t':
        if (attribute) return {XMLEscape::kEntity, "&#x9;"};
        break;
      default:
        break;
    }
    if (inNumericRange(codePoint) || zu::internal::codePointSetContains(alsoEscape, codePoint)) {
      return {XMLEscape::kHexReference, nullptr};
    }
    return {XMLEscape::kCopy, nullptr};
  }
};

// "&#x" + up to 8 digits + ";".
constexpr unsigned int kHexReferenceBytes = 12;

}  // namespace

zuString zuString::toXML(zuToXMLType type, const zuString& alsoEscape, unsigned int rangeLow,
                         unsigned int rangeHigh, const zuString& neverEscape) const {
  const XMLRules rules{type, alsoEscape, rangeLow, rangeHigh, neverEscape};
  const unsigned int length = Length();
  unsigned long long outputBytes = 0;
  bool changed = false;
  for (unsigned int pos = 0; pos < length;) {
    const unsigned int at = pos;
    const XMLEscape escape = rules.escapeOf(UniChar(pos));
    switch (escape.kind) {
      case XMLEscape::kCopy:
        outputBytes += pos - at;
        continue;
      case XMLEscape::kDrop:
        break;
      case XMLEscape::kEntity:
        outputBytes += std::strlen(escape.entity);
        break;
      case XMLEscape::kHexReference:
        outputBytes += kHexReferenceBytes;
        break;
    }
    changed = true;
  }
  if (!changed) return *this;
  if (outputBytes > kMaxLength) throw zuExMemory();

  zuString result;
  char* out = result.ReAlloc(static_cast<unsigned int>(outputBytes == 0 ? 1 : outputBytes), 0, 0);
  char* cursor = out;
  for (unsigned int pos = 0; pos < length;) {
    const unsigned int at = pos;
    const unsigned int codePoint = UniChar(pos);
    const XMLEscape escape = rules.escapeOf(codePoint);
    switch (escape.kind) {
      case XMLEscape::kCopy:
        std::memcpy(cursor, chars_ + at, pos - at);
        cursor += pos - at;
        break;
      case XMLEscape::kDrop:
        break;
      case XMLEscape::kEntity: {
        const size_t entityLength = std::strlen(escape.entity);
        std::memcpy(cursor, escape.entity, entityLength);
        cursor += entityLength;
        break;
      }
      case XMLEscape::kHexReference:
        cursor = writeHexReference(cursor, codePoint);
        break;
    }
  }
  result.SetLength(static_cast<unsigned int>(cursor - out));
  return result;
}

zuString zuString::toXHTML(int withDeclaration) const {
  static const char kDeclaration[] = "<?xml version=\"1.0\"?>";
  static const char kStart[] = "<body xmlns=\"http://www.w3.org/1999/xhtml\"><p>";
  static const char kTab[] = "<span style=\"kdl-tab-count:1\">&#160;</span>";
  static const char kSpaceRun[] = "<span style=\"kdl-spacerun:yes\">&#160;";

  // Most escapes are short; the rare long ones (tabs, space runs) grow the
  // block as they come.
  constexpr unsigned int kBytesPerEscape = 7;
  constexpr unsigned int kFrameBytes = 57;
  unsigned long long reserve = Length() + kFrameBytes + (withDeclaration ? 21 : 0);
  for (unsigned int i = 0; i < Length(); ++i) {
    if (std::strchr("<&>\r\n\t ", chars_[i]) != nullptr && chars_[i] != '\0') {
      reserve += kBytesPerEscape;
    }
  }
  if (reserve > kMaxLength) throw zuExMemory();
  zuString result;
  result.Reserve(static_cast<unsigned int>(reserve));
  if (withDeclaration) result += kDeclaration;
  result += kStart;
  const unsigned int length = Length();
  unsigned int spaces = 0;
  for (unsigned int pos = 0; pos < length;) {
    const unsigned int at = pos;
    const unsigned int codePoint = UniChar(pos);
    if (codePoint == ' ') {
      ++spaces;
      if (spaces == 2) {
        result += kSpaceRun;
      } else if (spaces > 2) {
        result += "&#160;";
      }
      continue;
    }
    if (spaces != 0) {
      result += spaces >= 2 ? " </span>" : " ";
      spaces = 0;
    }
    switch (codePoint) {
      case '<':
        result += "&lt;";
        break;
      case '&':
        result += "&amp;";
        break;
      case '>':
        result += "&gt;";
        break;
      case '\r':
        result += "&#xD;";
        break;
      case '\n':
        result += "</p><p>";
        break;
      case '\t':
        result += kTab;
        break;
      default:
        if (!isXMLForbidden(codePoint)) result.Append(chars_ + at, pos - at);
        break;
    }
  }
  if (spaces != 0) result += spaces >= 2 ? " </span>" : " ";
  result += "</p></body>";
  return result;
}
