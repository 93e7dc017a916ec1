// zuPicture: the formatters and parsers of each category, over the engines.
#include <cstdio>

#include "zu/core/zuException.h"
#include "zu/core/zuFormat.h"
#include "zu/core/zuMessageIds.h"
#include "zu/picture/RnDate.h"
#include "zu/picture/RnNum.h"
#include "zu/picture/RnText.h"
#include "zu/picture/RnTime.h"
#include "zu/picture/internal/zuCanonicalDateTime.h"
#include "zu/picture/internal/zuPictureBodies.h"
#include "zu/picture/internal/zuPictureDateTimeText.h"
#include "zu/picture/internal/zuPictureGrammarPieces.h"
#include "zu/picture/internal/zuPictureScan.h"
#include "zu/picture/zuPicture.h"

using zu::internal::peelSubPicture;

namespace {

constexpr int kCenturySplit = 30;

// A style pattern may carry alternatives of its own (the negative form of a
// currency); each is tried in turn.
template <class Try>
int eachBodyAlternative(const zuString& body, Try&& attempt) {
  unsigned int bar = 0;
  zuStorage<zuString> alternates;
  if (!body.CharInString('|', bar) || !zuPicture::getAlternates(body, alternates)) {
    return attempt(body);
  }
  for (unsigned int i = 0; i < alternates.GetSize(); ++i) {
    if (attempt(alternates[i])) return 1;
  }
  return 0;
}

const zuLiteral& zeroValue() {
  static const zuLiteral kZero("0");
  return kZero;
}

// "YYYY-MM-DD" of a parsed date, in ASCII digits whatever the locale.
zuString canonicalDate(const RnDate& date) {
  char text[32];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d", date.getYear(), date.getMonth(),
                date.getMonthDay());
  return zuString(text);
}

// "HH:MM:SS", with ".FFF" when there are milliseconds.
zuString canonicalTime(const RnTime& time) {
  char text[32];
  const int millis = time.getMilliSecond();
  if (millis > 0) {
    std::snprintf(text, sizeof text, "%02d:%02d:%02d.%03d", time.getHour(), time.getMinute(),
                  time.getSecond(), millis);
  } else {
    std::snprintf(text, sizeof text, "%02d:%02d:%02d", time.getHour(), time.getMinute(),
                  time.getSecond());
  }
  return zuString(text);
}

// The date and time parts of a date-time value: cut at the first "T"; a
// value without one is a date at midnight.
void splitDateTimeValue(const zuString& value, zuString& datePart, zuString& timePart) {
  unsigned int cut = 0;
  if (value.CharInString('T', cut)) {
    datePart = value.Substring(0, cut);
    timePart = value.Substring(cut + 1, value.Length() - cut - 1);
  } else {
    datePart = value;
    timePart = "00:00:00";
  }
}

int formatDateValue(RnDate& date, const zuString& body, int local, zuString& out) {
  if (local) date.setLocalDate();
  if (!date.isValid()) return 0;
  out = date.format(body);
  return !out.IsEmpty();
}

int formatTimeValue(RnTime& time, const zuString& body, int local, zuString& out) {
  if (local) time.setLocalTime();
  if (!time.isValid()) return 0;
  out = time.format(body, 0);
  return !out.IsEmpty();
}

// formatDateTime and formatDateTime_new; `dayShift` moves the date by the
// day the time crosses in the local-time conversion.
int formatDateTimeValue(const zuString& value, const zuString& picture, const zuString& datePicture,
                        const zuString& timePicture, const zuString& locale, zuString& out,
                        int local, bool dayShift) {
  out.Empty();
  zuString datePart;
  zuString timePart;
  splitDateTimeValue(value, datePart, timePart);
  zuString dateLocale = locale;
  const zuString dateBody = peelSubPicture(datePicture, zuPicture::getDATE(), dateLocale);
  zuString timeLocale = locale;
  const zuString timeBody = peelSubPicture(timePicture, zuPicture::getTIME(), timeLocale);
  zu::internal::CanonicalDate date(datePart, dateLocale);
  zu::internal::CanonicalTime time(timePart, timeLocale);
  zuString timeText;
  if (!formatTimeValue(time, timeBody, local, timeText)) return 0;
  if (dayShift) {
    const int days = time.getDays();
    if (days >= -1 && days <= 1) date += days;
  }
  zuString dateText;
  if (!formatDateValue(date, dateBody, local, dateText)) return 0;
  out = picture;
  zuPicture::possibleLiteralStrings(out, dateText, timeText);
  return 1;
}

}  // namespace

// --- Formatting -------------------------------------------------------------------

int zuPicture::formatNumeric(const zuString& value, const zuString& picture, const zuString& locale,
                             zuString& out, int flags) {
  zuString numberLocale = locale;
  const zuString body = peelSubPicture(picture, getNUM(), numberLocale);
  return zu::internal::formatNumericBody(value, body, numberLocale, out, flags);
}

int zu::internal::formatNumericBody(const zuString& value, const zuString& body,
                                    const zuString& numberLocale, zuString& out, int flags) {
  out.Empty();
  if (value.IsNull()) return 0;
  RnNum number(value, numberLocale);
  if (!number.isValid()) return 0;
  return eachBodyAlternative(body, [&](const zuString& alternative) {
    out = number.format(alternative, nullptr, flags);
    return out.IsEmpty() ? 0 : 1;
  });
}

int zuPicture::formatText(const zuString& value, const zuString& picture, const zuString& locale,
                          zuString& out) {
  zuString textLocale = locale;
  const zuString body = peelSubPicture(picture, getTEXT(), textLocale);
  return zu::internal::formatTextBody(value, body, out);
}

int zu::internal::formatTextBody(const zuString& value, const zuString& body, zuString& out) {
  out = RnText::formatValue(value, body);
  return !out.IsEmpty();
}

namespace {

// formatNull and formatZero once the value has qualified.
int formatSpecialBody(const zuString& picture, const zuString& word, const zuString& locale,
                      zuString& out) {
  zuString bodyLocale = locale;
  const zuString body = peelSubPicture(picture, word, bodyLocale);
  if (body.IsEmpty()) {
    out = zuString::EmptyString();
    return 1;
  }
  return zuPicture::formatNumeric(zeroValue(), body, bodyLocale, out, 0);
}

}  // namespace

int zuPicture::formatNull(const zuString& value, const zuString& picture, const zuString& locale,
                          zuString& out) {
  out.Empty();
  if (!value.IsNull()) return 0;
  return formatSpecialBody(picture, getNULL(), locale, out);
}

int zuPicture::formatZero(const zuString& value, const zuString& picture, const zuString& locale,
                          zuString& out) {
  out.Empty();
  if (value.IsNull() || !value.Equals(zeroValue())) return 0;
  return formatSpecialBody(picture, getZERO(), locale, out);
}

int zuPicture::formatDate(const zuString& value, const zuString& picture, const zuString& locale,
                          zuString& out, int local) {
  zuString dateLocale = locale;
  const zuString body = peelSubPicture(picture, getDATE(), dateLocale);
  return zu::internal::formatDateBody(value, body, dateLocale, out, local);
}

int zu::internal::formatDateBody(const zuString& value, const zuString& body,
                                 const zuString& dateLocale, zuString& out, int local) {
  out.Empty();
  if (value.IsNull()) return 0;
  zu::internal::CanonicalDate date(value, dateLocale);
  return formatDateValue(date, body, local, out);
}

int zuPicture::formatTime(const zuString& value, const zuString& picture, const zuString& locale,
                          zuString& out, int local) {
  zuString timeLocale = locale;
  const zuString body = peelSubPicture(picture, getTIME(), timeLocale);
  return zu::internal::formatTimeBody(value, body, timeLocale, out, local);
}

int zu::internal::formatTimeBody(const zuString& value, const zuString& body,
                                 const zuString& timeLocale, zuString& out, int local) {
  out.Empty();
  if (value.IsNull()) return 0;
  zu::internal::CanonicalTime time(value, timeLocale);
  return formatTimeValue(time, body, local, out);
}

int zuPicture::formatDateTime(const zuString& value, const zuString& picture,
                              const zuString& datePicture, const zuString& timePicture,
                              const zuString& locale, zuString& out, int local) {
  if (value.IsNull()) return 0;
  return formatDateTimeValue(value, picture, datePicture, timePicture, locale, out, local, false);
}

int zuPicture::formatDateTime_new(const zuString& value, const zuString& picture,
                                  const zuString& datePicture, const zuString& timePicture,
                                  const zuString& locale, zuString& out, int local) {
  if (value.IsNull()) return 0;
  return formatDateTimeValue(value, picture, datePicture, timePicture, locale, out, local, true);
}

int zuPicture::formatCompound(const zuString&, const zuString&, const zuString&, zuString& out) {
  out.Empty();
  ZuExThrow(zuFormat(zuMessageIds::kCompoundPicture, zuString("zuPicture::formatCompound")));
}

// --- Parsing ------------------------------------------------------------------------

int zuPicture::parseNumeric(const zuString& value, const zuString& picture, const zuString& locale,
                            zuString& out) {
  zuString numberLocale = locale;
  const zuString body = peelSubPicture(picture, getNUM(), numberLocale);
  return zu::internal::parseNumericBody(value, body, numberLocale, out);
}

int zu::internal::parseNumericBody(const zuString& value, const zuString& body,
                                   const zuString& numberLocale, zuString& out) {
  out.Empty();
  if (value.IsNull()) return 0;
  return eachBodyAlternative(body, [&](const zuString& alternative) {
    RnNum number(value, alternative, numberLocale);
    if (!number.isValid()) return 0;
    out = number.getText();
    return 1;
  });
}

int zuPicture::parseText(const zuString& value, const zuString& picture, const zuString& locale,
                         zuString& out) {
  zuString textLocale = locale;
  const zuString body = peelSubPicture(picture, getTEXT(), textLocale);
  return zu::internal::parseTextBody(value, body, out);
}

int zu::internal::parseTextBody(const zuString& value, const zuString& body, zuString& out) {
  // The text is set only on success.
  if (RnText::parseText(value, body, out)) return 1;
  out.Empty();
  return 0;
}

namespace {

// parseNull and parseZero: the text must be what the body writes for them.
bool matchesSpecialBody(const zuString& value, const zuString& picture, const zuString& word,
                        const zuString& locale) {
  if (value.IsNull()) return false;
  zuString shown;
  return formatSpecialBody(picture, word, locale, shown) && shown.Equals(value);
}

}  // namespace

int zuPicture::parseNull(const zuString& value, const zuString& picture, const zuString& locale,
                         zuString& out) {
  out.Empty();
  if (!matchesSpecialBody(value, picture, getNULL(), locale)) return 0;
  out.SetNull();
  return 1;
}

int zuPicture::parseZero(const zuString& value, const zuString& picture, const zuString& locale,
                         zuString& out) {
  out.Empty();
  if (!matchesSpecialBody(value, picture, getZERO(), locale)) return 0;
  out = zeroValue();
  return 1;
}

namespace {

bool parseDateText(const zuString& text, const zuString& body, const zuString& locale,
                   zuString& out) {
  RnDate date(text, body, locale, kCenturySplit);
  if (!date.isValid()) return false;
  out = canonicalDate(date);
  return true;
}

// The canonical time is the wall-clock reading of the text: a text without
// a zone is read in the zone it is shown in, so no conversion applies.
bool parseTimeText(const zuString& text, const zuString& body, const zuString& locale,
                   zuString& out) {
  RnTime time(text, body, locale);
  if (!time.isValid()) return false;
  out = canonicalTime(time);
  return true;
}

}  // namespace

int zuPicture::parseDate(const zuString& value, const zuString& picture, const zuString& locale,
                         zuString& out, int) {
  zuString dateLocale = locale;
  const zuString body = peelSubPicture(picture, getDATE(), dateLocale);
  return zu::internal::parseDateBody(value, body, dateLocale, out);
}

int zu::internal::parseDateBody(const zuString& value, const zuString& body,
                                const zuString& dateLocale, zuString& out) {
  out.Empty();
  if (value.IsNull()) return 0;
  return parseDateText(value, body, dateLocale, out);
}

int zuPicture::parseTime(const zuString& value, const zuString& picture, const zuString& locale,
                         zuString& out, int) {
  zuString timeLocale = locale;
  const zuString body = peelSubPicture(picture, getTIME(), timeLocale);
  return zu::internal::parseTimeBody(value, body, timeLocale, out);
}

int zu::internal::parseTimeBody(const zuString& value, const zuString& body,
                                const zuString& timeLocale, zuString& out) {
  out.Empty();
  if (value.IsNull()) return 0;
  return parseTimeText(value, body, timeLocale, out);
}

int zuPicture::parseDateTime(const zuString& value, const zuString& picture,
                             const zuString& datePicture, const zuString& timePicture,
                             const zuString& locale, zuString& out, int) {
  out.Empty();
  if (value.IsNull()) return 0;
  zuString dateLocale = locale;
  const zuString dateBody = peelSubPicture(datePicture, getDATE(), dateLocale);
  zuString timeLocale = locale;
  const zuString timeBody = peelSubPicture(timePicture, getTIME(), timeLocale);
  zuString dateText;
  zuString timeText;
  const auto readDate = [&](const zuString& text) {
    return parseDateText(text, dateBody, dateLocale, dateText);
  };
  const auto readTime = [&](const zuString& text) {
    return parseTimeText(text, timeBody, timeLocale, timeText);
  };
  if (!zu::internal::matchDateTimeText(value, picture, locale, readDate, readTime)) return 0;
  out = dateText + "T" + timeText;
  return 1;
}

int zuPicture::parseCompound(const zuString&, const zuString&, const zuString&, zuString& out) {
  out.Empty();
  ZuExThrow(zuFormat(zuMessageIds::kCompoundPicture, zuString("zuPicture::parseCompound")));
}
