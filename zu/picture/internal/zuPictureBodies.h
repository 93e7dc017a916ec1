// The category formatters and parsers of zuPicture once the sub-picture has
// been peeled: `body` is what lies between the braces (a style's pattern)
// and `locale` the locale it is read in, the qualifier's when it has one
// (text pictures read no locale data and take none).
// zuPicture's own operations peel and call these; the walk over a prepared
// clause calls them with the body it prepared.
#pragma once

#include "zu/core/zuString.h"

namespace zu::internal {

int formatNumericBody(const zuString& value, const zuString& body, const zuString& locale,
                      zuString& out, int flags);
int formatTextBody(const zuString& value, const zuString& body, zuString& out);
int formatDateBody(const zuString& value, const zuString& body, const zuString& locale,
                   zuString& out, int local);
int formatTimeBody(const zuString& value, const zuString& body, const zuString& locale,
                   zuString& out, int local);

int parseNumericBody(const zuString& value, const zuString& body, const zuString& locale,
                     zuString& out);
int parseTextBody(const zuString& value, const zuString& body, zuString& out);
int parseDateBody(const zuString& value, const zuString& body, const zuString& locale,
                  zuString& out);
int parseTimeBody(const zuString& value, const zuString& body, const zuString& locale,
                  zuString& out);

}  // namespace zu::internal
