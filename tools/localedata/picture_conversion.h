// Conversion of CLDR date, time and number patterns into picture syntax.
#pragma once

#include <string>

namespace zu::tools {

// "EEEE, d MMMM y" -> "EEEE, D MMMM YYYY"; literals other than plain
// punctuation are quoted, U+202F and U+00A0 become plain spaces.
std::string datePicture(const std::string& cldr);
// "h:mm:ss a zzzz" -> "h:MM:SS A Z".
std::string timePicture(const std::string& cldr);
// "{1}, {0}" -> "date{}, time{}".
std::string combiningPicture(const std::string& cldr);
// "#,##0.###" -> "z,zz9.zzz"; "¤#,##0.00" -> "s$z,zz9.99" (the minus sign
// before a prefix); a negative subpattern becomes the picture itself when it
// shows a minus sign ("s"), else a second alternative after "|".
std::string numericPicture(const std::string& cldr);

}  // namespace zu::tools
