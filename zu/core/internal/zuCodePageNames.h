// Encoding names and code-page numbers: the name rule that reduces every
// spelling of an encoding to one number, and the names each number goes by.
#pragma once

namespace zu::internal {

// Names of this many bytes or more are read as numbers, never looked up.
constexpr unsigned int kLongNameLength = 30;
// Capacity of a converter's name buffer (31 characters and the NUL).
constexpr unsigned int kCodePageNameSize = 32;

// Writes the canonical form of the `length` bytes at `name` to `out` (room
// for `length` + 1 bytes) and returns its length: ASCII punctuation and
// white space dropped, ASCII letters upper-cased, a leading "CP" and then a
// leading "CS" removed, then the first "ISO", "IBM" and "WINDOWS".
unsigned int canonicalizeName(const char* name, unsigned int length, char* out);

// The code-page number of an encoding name (0 when unknown or null).
int codePageFromName(const char* name);

// The ICU table name of `codePage`, or the empty text.
const char* platformNameOf(int codePage);

// The ISO/IANA-style name of `codePage`; `legacy` picks the older spellings
// of Shift_JIS and KSC_5601.
const char* isoNameOf(int codePage, int legacy);

// Copies the name ICU opens `codePage` by into `out` (kCodePageNameSize
// bytes): the platform name cut to 31 characters, with the two table names
// ICU needs spelt out in full.
void icuNameOf(int codePage, char* out);

// The code page of the C library's current character set (LC_CTYPE):
// "ANSI_X3.4-1968" is 367, anything else goes through the name rule.
int processCodePage();

// `codePage` with the Windows pages replaced by the tables that convert them
// for the default converter: 1252 by ISO-8859-1, 950 by 1373, 949 by 1363,
// 936 by 1386 and 932 by 943.
int defaultTableFor(int codePage);

}  // namespace zu::internal
