// zuPicture: the object form and the walk over a clause's alternatives.
#include "zu/picture/zuPicture.h"

#include "zu/picture/internal/zuPictureScan.h"

using zu::internal::expandPictureStyles;

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

// Formats a value that is neither null nor empty through one alternative,
// trying the categories in their fixed order.
int formatAlternative(const zuString& value, const zuString& alternative, const zuString& locale,
                      int flags, bool dayShift, zuString& out) {
  zuString datePicture;
  zuString timePicture;
  if (zuPicture::isNumericPicture(alternative)) {
    return zuPicture::formatNumeric(value, alternative, locale, out, flags);
  }
  if (zuPicture::isNullPicture(alternative)) {
    return zuPicture::formatNull(value, alternative, locale, out);
  }
  if (zuPicture::isZeroPicture(alternative)) {
    return zuPicture::formatZero(value, alternative, locale, out);
  }
  if (zuPicture::isDateTimePicture(alternative, datePicture, timePicture)) {
    return dayShift ? zuPicture::formatDateTime_new(value, alternative, datePicture, timePicture,
                                                    locale, out, 1)
                    : zuPicture::formatDateTime(value, alternative, datePicture, timePicture,
                                                locale, out, 1);
  }
  if (zuPicture::isDatePicture(alternative)) {
    return zuPicture::formatDate(value, alternative, locale, out, 1);
  }
  if (zuPicture::isTimePicture(alternative)) {
    return zuPicture::formatTime(value, alternative, locale, out, 1);
  }
  if (zuPicture::isTextPicture(alternative)) {
    return zuPicture::formatText(value, alternative, locale, out);
  }
  if (zuPicture::isCompoundPicture(alternative)) {
    return zuPicture::formatCompound(value, alternative, locale, out);
  }
  return 0;
}

int parseAlternative(const zuString& value, const zuString& alternative, const zuString& locale,
                     zuString& out) {
  zuString datePicture;
  zuString timePicture;
  if (zuPicture::isNumericPicture(alternative)) {
    return zuPicture::parseNumeric(value, alternative, locale, out);
  }
  if (zuPicture::isNullPicture(alternative)) {
    return zuPicture::parseNull(value, alternative, locale, out);
  }
  if (zuPicture::isZeroPicture(alternative)) {
    return zuPicture::parseZero(value, alternative, locale, out);
  }
  if (zuPicture::isDateTimePicture(alternative, datePicture, timePicture)) {
    return zuPicture::parseDateTime(value, alternative, datePicture, timePicture, locale, out, 1);
  }
  if (zuPicture::isDatePicture(alternative)) {
    return zuPicture::parseDate(value, alternative, locale, out, 1);
  }
  if (zuPicture::isTimePicture(alternative)) {
    return zuPicture::parseTime(value, alternative, locale, out, 1);
  }
  if (zuPicture::isTextPicture(alternative)) {
    return zuPicture::parseText(value, alternative, locale, out);
  }
  if (zuPicture::isCompoundPicture(alternative)) {
    return zuPicture::parseCompound(value, alternative, locale, out);
  }
  return 0;
}

// The alternatives as the categories see them: escapes read, styles
// replaced by the locale's patterns (which may add alternatives of their
// own). False when the picture ends inside a quoted literal.
bool preparedAlternatives(const zuString& picture, const zuString& locale,
                          zuStorage<zuString>& alternatives) {
  zuStorage<zuString> written;
  if (!zuPicture::getAlternates(picture, written)) return false;
  alternatives.RemoveAll();
  for (unsigned int i = 0; i < written.GetSize(); ++i) {
    const zuString alternative = expandPictureStyles(zuPicture::interpret(written[i]), locale);
    unsigned int bar = 0;
    zuStorage<zuString> pieces;
    if (alternative.CharInString('|', bar) && zuPicture::getAlternates(alternative, pieces)) {
      for (unsigned int j = 0; j < pieces.GetSize(); ++j) alternatives.Add(pieces[j]);
    } else {
      alternatives.Add(alternative);
    }
  }
  return true;
}

}  // namespace

zuString zuPicture::run(const zuString& value, const zuString& picture, const zuString& locale,
                        int* status, int flags, bool dayShift) {
  if (picture.IsEmpty()) return value;
  zuStorage<zuString> alternates;
  if (!preparedAlternatives(picture, locale, alternates)) return zuString::EmptyString();
  zuString out = zuString::EmptyString();
  int success = 0;
  for (unsigned int i = 0; i < alternates.GetSize() && !success; ++i) {
    const zuString& alternative = alternates[i];
    if (value.IsNull()) {
      if (isNullPicture(alternative)) success = formatNull(value, alternative, locale, out);
    } else if (value.IsEmpty()) {
      if (isEmptyPicture(alternative)) {
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
  zuStorage<zuString> alternates;
  if (!preparedAlternatives(picture, locale, alternates)) return zuString::EmptyString();
  zuString out = zuString::EmptyString();
  int success = 0;
  for (unsigned int i = 0; i < alternates.GetSize() && !success; ++i) {
    success = parseAlternative(value, alternates[i], locale, out);
  }
  if (status != nullptr) *status = success;
  return out;
}
