#include "zu/picture/internal/zuPictureDateTimeText.h"

#include "zu/picture/internal/zuPictureGrammarPieces.h"
#include "zu/picture/internal/zuPictureScan.h"
#include "zu/picture/zuPicture.h"

namespace zu::internal {

namespace {

constexpr int kMaxAttempts = 4096;

void appendLiteral(std::vector<DateTimeSegment>& segments, const zuString& text) {
  if (text.IsEmpty()) return;
  if (!segments.empty() && segments.back().kind == DateTimeSegment::kLiteral) {
    segments.back().text += text;
  } else {
    segments.push_back({DateTimeSegment::kLiteral, text});
  }
}

void collectSegments(const zuString& picture, const zuString& locale,
                     std::vector<DateTimeSegment>& segments) {
  const unsigned int length = picture.Length();
  for (unsigned int pos = 0; pos < length;) {
    unsigned int next = pos;
    const unsigned int character = pictureCharAt(picture, pos, next);
    zuString literal;
    if (character == '\'' && zu::internal::getLiteralSubstr(picture, pos, next, &literal)) {
      appendLiteral(segments, literal);
      pos = next;
      continue;
    }
    SubPicture item;
    zuString category;
    zuString itemLocale = locale;
    zuString body;
    if (zu::internal::isCharAlphabetic(character) && readSubPicture(picture, pos, item) &&
        resolveSubPicture(item, category, itemLocale, body, true)) {
      if (item.word.CompareNoCase(zuPicture::getDATE()) == 0) {
        segments.push_back({DateTimeSegment::kDate, zuString()});
      } else if (item.word.CompareNoCase(zuPicture::getTIME()) == 0) {
        segments.push_back({DateTimeSegment::kTime, zuString()});
      } else if (item.word.CompareNoCase(zuPicture::getDATETIME()) == 0) {
        collectSegments(body, itemLocale, segments);
      }
      pos = item.end;
      continue;
    }
    appendLiteral(segments, picture.Substring(pos, next - pos));
    pos = next;
  }
}

struct Matcher {
  const zuString& text;
  const std::vector<DateTimeSegment>& segments;
  const std::function<bool(const zuString&)>& readDate;
  const std::function<bool(const zuString&)>& readTime;
  int attempts = 0;

  bool match(size_t index, unsigned int pos) {
    const unsigned int length = text.Length();
    if (index == segments.size()) return pos == length;
    const DateTimeSegment& segment = segments[index];
    if (segment.kind == DateTimeSegment::kLiteral) {
      const unsigned int size = segment.text.Length();
      return pos + size <= length && text.Substring(pos, size).Equals(segment.text) &&
             match(index + 1, pos + size);
    }
    const auto& read = segment.kind == DateTimeSegment::kDate ? readDate : readTime;
    // The part ends at the end of the text when it is last, else where the
    // next literal begins, else at any character boundary.
    const bool last = index + 1 == segments.size();
    const DateTimeSegment* following = last ? nullptr : &segments[index + 1];
    for (unsigned int end = length; end > pos; --end) {
      if (last && end != length) break;
      if ((text[end] & 0xC0) == 0x80) continue;
      if (following != nullptr && following->kind == DateTimeSegment::kLiteral &&
          following->text[0] != text[end]) {
        continue;
      }
      if (++attempts > kMaxAttempts) return false;
      if (read(text.Substring(pos, end - pos)) && match(index + 1, end)) return true;
    }
    return false;
  }
};

}  // namespace

std::vector<DateTimeSegment> dateTimeSegments(const zuString& picture, const zuString& locale) {
  std::vector<DateTimeSegment> segments;
  collectSegments(picture, locale, segments);
  return segments;
}

bool matchDateTimeText(const zuString& text, const zuString& picture, const zuString& locale,
                       const std::function<bool(const zuString&)>& readDate,
                       const std::function<bool(const zuString&)>& readTime) {
  const std::vector<DateTimeSegment> segments = dateTimeSegments(picture, locale);
  Matcher matcher{text, segments, readDate, readTime};
  return matcher.match(0, 0);
}

}  // namespace zu::internal
