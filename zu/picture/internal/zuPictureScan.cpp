#include "zu/picture/internal/zuPictureScan.h"

#include "zu/core/zuCharConverter.h"

namespace zu::internal {

unsigned int pictureCharAt(const zuString& picture, unsigned int pos, unsigned int& next) {
  next = pos;
  const unsigned int character = picture.UniChar(next);
  // A lone 0 byte cannot stand inside a zuString; UniChar returns 0 only at
  // the end, where `next` must still move so that no walk loops.
  if (next == pos) next = pos + 1;
  return character;
}

bool skipQuotedLiteral(const zuString& picture, unsigned int quotePos, unsigned int& end) {
  const unsigned int length = picture.Length();
  for (unsigned int pos = quotePos + 1; pos < length; ++pos) {
    if (picture[pos] != '\'') continue;
    if (pos + 1 < length && picture[pos + 1] == '\'') {
      ++pos;
      continue;
    }
    end = pos + 1;
    return true;
  }
  return false;
}

namespace {

// The position of the first `stop` or `otherStop` byte at or after `pos`, or
// the length when there is none.
unsigned int findByte(const zuString& picture, unsigned int pos, char stop, char otherStop) {
  const unsigned int length = picture.Length();
  while (pos < length && picture[pos] != stop && picture[pos] != otherStop) ++pos;
  return pos;
}

}  // namespace

bool readSubPicture(const zuString& picture, unsigned int pos, SubPicture& item) {
  const unsigned int length = picture.Length();
  unsigned int next = pos;
  if (pos >= length || !zuCharConverter::IsAlpha(pictureCharAt(picture, pos, next))) return false;
  unsigned int wordEnd = next;
  while (wordEnd < length && zuCharConverter::IsAlpha(pictureCharAt(picture, wordEnd, next))) {
    wordEnd = next;
  }
  item.word = picture.Substring(pos, wordEnd - pos);
  pos = wordEnd;
  item.hasStyle = false;
  item.style = zuString();
  if (pos < length && picture[pos] == '.') {
    const unsigned int styleEnd = findByte(picture, pos + 1, '(', '{');
    if (styleEnd >= length) return false;
    item.hasStyle = true;
    item.style = picture.Substring(pos + 1, styleEnd - pos - 1);
    pos = styleEnd;
  }
  item.hasLocale = false;
  item.locale = zuString();
  if (pos < length && picture[pos] == '(') {
    const unsigned int localeEnd = findByte(picture, pos + 1, ')', ')');
    if (localeEnd >= length) return false;
    item.hasLocale = true;
    item.locale = picture.Substring(pos + 1, localeEnd - pos - 1);
    pos = localeEnd + 1;
  }
  if (pos >= length || picture[pos] != '{') return false;
  const unsigned int bodyStart = pos + 1;
  for (pos = bodyStart; pos < length; ++pos) {
    if (picture[pos] == '\'') {
      unsigned int end = pos;
      if (!skipQuotedLiteral(picture, pos, end)) return false;
      pos = end - 1;
    } else if (picture[pos] == '}') {
      item.body = picture.Substring(bodyStart, pos - bodyStart);
      item.end = pos + 1;
      return true;
    }
  }
  return false;
}

}  // namespace zu::internal
