// zuPicture: the object form and the walk over a clause's alternatives.
#include "zu/picture/zuPicture.h"

#include "zu/picture/internal/zuPictureBodies.h"
#include "zu/picture/internal/zuPictureGrammarPieces.h"
#include "zu/picture/internal/zuPreparedPicture.h"

zuPicture::zuPicture(const zuString& locale) : locale_(locale) {}

zuString zuPicture::format(const zuString& value, const zuString& picture, int* status,
                           int flags) const {
  return run(value, picture, locale_, status, flags, false);
}

zuString zuPicture::format_new(const zuString& value, const zuString& picture, int* status,
                               int flags) const {
  return run(value, picture, locale_, status, flags, true);
}

zuString zuPicture::parse(const zuString& value, const zuString& picture, int* status) const {
  return parse(value, picture, locale_, status);
}

zuString zuPicture::format(const zuString& value, const zuString& picture, const zuString& locale,
                           int* status, int flags) {
  return run(value, picture, locale, status, flags, false);
}

zuString zuPicture::format_new(const zuString& value, const zuString& picture,
                               const zuString& locale, int* status, int flags) {
  return run(value, picture, locale, status, flags, true);
}

namespace {

using namespace zu::internal;

// Formats a value that is neither null nor empty through one alternative,
// in the category the alternative was classified in.
int formatAlternative(const zuString& value, const PreparedAlternative& prepared,
                      const zuString& locale, int flags, bool dayShift, zuString& out) {
  const zuString& alternative = prepared.text;
  switch (prepared.kind) {
    case PictureKind::kNumeric:
      return formatNumericBody(value, prepared.body, prepared.bodyLocale, out, flags);
    case PictureKind::kNull:
      return zuPicture::formatNull(value, alternative, locale, out);
    case PictureKind::kZero:
      return zuPicture::formatZero(value, alternative, locale, out);
    case PictureKind::kDateTime:
      return dayShift ? zuPicture::formatDateTime_new(value, alternative, prepared.datePicture,
                                                      prepared.timePicture, locale, out, 1)
                      : zuPicture::formatDateTime(value, alternative, prepared.datePicture,
                                                  prepared.timePicture, locale, out, 1);
    case PictureKind::kDate:
      return formatDateBody(value, prepared.body, prepared.bodyLocale, out, 1);
    case PictureKind::kTime:
      return formatTimeBody(value, prepared.body, prepared.bodyLocale, out, 1);
    case PictureKind::kText:
      if (const int done = formatThroughLayout(prepared.textLayout, value, out); done >= 0) {
        return done;
      }
      return formatTextBody(value, prepared.body, out);
    case PictureKind::kCompound:
      return zuPicture::formatCompound(value, alternative, locale, out);
    case PictureKind::kNone:
      break;
  }
  return 0;
}

int parseAlternative(const zuString& value, const PreparedAlternative& prepared,
                     const zuString& locale, zuString& out) {
  const zuString& alternative = prepared.text;
  switch (prepared.kind) {
    case PictureKind::kNumeric:
      return parseNumericBody(value, prepared.body, prepared.bodyLocale, out);
    case PictureKind::kNull:
      return zuPicture::parseNull(value, alternative, locale, out);
    case PictureKind::kZero:
      return zuPicture::parseZero(value, alternative, locale, out);
    case PictureKind::kDateTime:
      return zuPicture::parseDateTime(value, alternative, prepared.datePicture,
                                      prepared.timePicture, locale, out, 1);
    case PictureKind::kDate:
      return parseDateBody(value, prepared.body, prepared.bodyLocale, out);
    case PictureKind::kTime:
      return parseTimeBody(value, prepared.body, prepared.bodyLocale, out);
    case PictureKind::kText:
      if (const int done = parseThroughLayout(prepared.textLayout, value, out); done >= 0) {
        return done;
      }
      return parseTextBody(value, prepared.body, out);
    case PictureKind::kCompound:
      return zuPicture::parseCompound(value, alternative, locale, out);
    case PictureKind::kNone:
      break;
  }
  return 0;
}

}  // namespace

zuString zuPicture::run(const zuString& value, const zuString& picture, const zuString& locale,
                        int* status, int flags, bool dayShift) {
  if (picture.IsEmpty()) return value;
  const zu::internal::PreparedPicture& prepared = zu::internal::preparedPicture(picture, locale);
  if (!prepared.readable) return zuString::EmptyString();
  zuString out = zuString::EmptyString();
  int success = 0;
  for (std::size_t i = 0; i < prepared.alternatives.size() && !success; ++i) {
    const PreparedAlternative& alternative = prepared.alternatives[i];
    if (value.IsNull()) {
      if (alternative.takesNull) success = formatNull(value, alternative.text, locale, out);
    } else if (value.IsEmpty()) {
      if (alternative.takesEmpty) {
        out = zuString::EmptyString();
        success = 1;
      }
    } else {
      success = formatAlternative(value, alternative, locale, flags, dayShift, out);
    }
  }
  if (status != nullptr) *status = success;
  return out;
}

zuString zuPicture::parse(const zuString& value, const zuString& picture, const zuString& locale,
                          int* status) {
  if (picture.IsEmpty()) return value;
  if (value.IsNull()) return zuString();
  const zu::internal::PreparedPicture& prepared = zu::internal::preparedPicture(picture, locale);
  if (!prepared.readable) return zuString::EmptyString();
  zuString out = zuString::EmptyString();
  int success = 0;
  for (std::size_t i = 0; i < prepared.alternatives.size() && !success; ++i) {
    success = parseAlternative(value, prepared.alternatives[i], locale, out);
  }
  if (status != nullptr) *status = success;
  return out;
}
