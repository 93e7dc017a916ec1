#include "zu/picture/internal/zuPreparedPicture.h"

#include <array>
#include <bit>
#include <cstdint>

#include "zu/core/internal/zuShortCopy.h"
#include "zu/core/internal/zuThreadMemo.h"
#include "zu/picture/internal/zuPictureGrammarPieces.h"
#include "zu/picture/internal/zuPictureScan.h"
#include "zu/picture/zuPicture.h"

namespace zu::internal {

namespace {

constexpr unsigned kSlotBits = 6;
constexpr std::size_t kRemembered = std::size_t{1} << kSlotBits;

struct Remembered {
  zuString picture;
  zuString locale;
  PreparedPicture prepared;
  bool used = false;
};

// A few bytes of a text that tell most clauses apart: its first and last
// eight and, in a longer text, the eight in its middle, with its length.
// Two clauses that differ only elsewhere share a slot, and take turns in it.
[[gnu::always_inline]] inline uint64_t sample(const zuString& text) {
  const char* bytes = text;
  const std::size_t length = text.Length();
  uint64_t bits = 0;
  if (length >= 8) {
    bits = loadWord<uint64_t>(bytes) ^ std::rotl(loadWord<uint64_t>(bytes + length - 8), 23);
    if (length > 16) bits ^= std::rotl(loadWord<uint64_t>(bytes + length / 2 - 4), 41);
  } else if (length >= 4) {
    bits = loadWord<uint32_t>(bytes) | uint64_t{loadWord<uint32_t>(bytes + length - 4)} << 32;
  } else if (length > 0) {
    bits = static_cast<unsigned char>(bytes[0]) |
           static_cast<unsigned char>(bytes[length / 2]) << 8 |
           static_cast<unsigned char>(bytes[length - 1]) << 16;
  }
  return bits ^ length << 56;
}

// The slot of a clause and locale: the top bits of one multiply.
std::size_t slotOf(const zuString& picture, const zuString& locale) {
  constexpr uint64_t kMultiplier = 0x9E3779B97F4A7C15ull;
  const uint64_t bits = sample(picture) ^ std::rotl(sample(locale), 31);
  return static_cast<std::size_t>((bits * kMultiplier) >> (64 - kSlotBits));
}

template <class Word>
bool sameWord(const char* a, const char* b) {
  return loadWord<Word>(a) == loadWord<Word>(b);
}

// Clauses and locale names are short: compared a word at a time, the last
// word overlapping the one before it, without a call.
[[gnu::always_inline]] inline bool sameText(const zuString& left, const zuString& right) {
  const std::size_t length = left.Length();
  if (length != right.Length()) return false;
  const char* a = left;
  const char* b = right;
  if (length >= 8) {
    for (std::size_t i = 0; i + 8 < length; i += 8) {
      if (!sameWord<uint64_t>(a + i, b + i)) return false;
    }
    return sameWord<uint64_t>(a + length - 8, b + length - 8);
  }
  if (length >= 4) {
    return sameWord<uint32_t>(a, b) && sameWord<uint32_t>(a + length - 4, b + length - 4);
  }
  for (std::size_t i = 0; i < length; ++i) {
    if (a[i] != b[i]) return false;
  }
  return true;
}

PictureKind classify(const zuString& alternative, zuString& datePicture, zuString& timePicture) {
  if (zuPicture::isNumericPicture(alternative)) return PictureKind::kNumeric;
  if (zuPicture::isNullPicture(alternative)) return PictureKind::kNull;
  if (zuPicture::isZeroPicture(alternative)) return PictureKind::kZero;
  if (zuPicture::isDateTimePicture(alternative, datePicture, timePicture)) {
    return PictureKind::kDateTime;
  }
  if (zuPicture::isDatePicture(alternative)) return PictureKind::kDate;
  if (zuPicture::isTimePicture(alternative)) return PictureKind::kTime;
  if (zuPicture::isTextPicture(alternative)) return PictureKind::kText;
  if (zu::internal::isCompoundPicture(alternative)) return PictureKind::kCompound;
  return PictureKind::kNone;
}

// The category word whose sub-picture the engines of `kind` read.
const zuLiteral* engineWord(PictureKind kind) {
  switch (kind) {
    case PictureKind::kNumeric:
      return &zuPicture::getNUM();
    case PictureKind::kText:
      return &zuPicture::getTEXT();
    case PictureKind::kDate:
      return &zuPicture::getDATE();
    case PictureKind::kTime:
      return &zuPicture::getTIME();
    default:
      return nullptr;
  }
}

void addAlternative(const zuString& text, const zuString& locale, PreparedPicture& prepared) {
  PreparedAlternative alternative;
  alternative.text = text;
  alternative.kind = classify(text, alternative.datePicture, alternative.timePicture);
  if (const zuLiteral* word = engineWord(alternative.kind)) {
    alternative.bodyLocale = locale;
    alternative.body = peelSubPicture(text, *word, alternative.bodyLocale);
  }
  if (alternative.kind == PictureKind::kText)
    alternative.textLayout = textLayoutOf(alternative.body);
  alternative.takesNull = zuPicture::isNullPicture(text) != 0;
  alternative.takesEmpty = zu::internal::isEmptyPicture(text) != 0;
  prepared.alternatives.push_back(std::move(alternative));
}

void prepare(const zuString& picture, const zuString& locale, PreparedPicture& prepared) {
  prepared.alternatives.clear();
  zuStorage<zuString> written;
  prepared.readable = zuPicture::getAlternates(picture, written) != 0;
  if (!prepared.readable) return;
  for (unsigned int i = 0; i < written.GetSize(); ++i) {
    const zuString alternative = expandPictureStyles(zu::internal::interpret(written[i]), locale);
    unsigned int bar = 0;
    zuStorage<zuString> pieces;
    if (alternative.CharInString('|', bar) && zuPicture::getAlternates(alternative, pieces)) {
      for (unsigned int j = 0; j < pieces.GetSize(); ++j)
        addAlternative(pieces[j], locale, prepared);
    } else {
      addAlternative(alternative, locale, prepared);
    }
  }
}

}  // namespace

const PreparedPicture& preparedPicture(const zuString& picture, const zuString& locale) {
  auto& remembered = zuThreadMemo<std::array<Remembered, kRemembered>>::get();
  Remembered& slot = remembered[slotOf(picture, locale)];
  if (slot.used && sameText(slot.picture, picture) && sameText(slot.locale, locale)) {
    return slot.prepared;
  }
  // Private copies: the caller's texts may be literals over bytes that do
  // not outlive the call, and every remembered piece is cut from these.
  slot.used = false;
  slot.picture = zuString(static_cast<const char*>(picture), picture.Length());
  slot.locale = zuString(static_cast<const char*>(locale), locale.Length());
  prepare(slot.picture, slot.locale, slot.prepared);
  slot.used = true;
  return slot.prepared;
}

}  // namespace zu::internal
