// zuCharConverter: one character encoding, named by any of its spellings.
//
// Every spelling of an encoding ("Shift_JIS", "SJIS", "windows-1252", CP1252,
// "ISO-8859-1", a legacy number ...) is reduced to one code-page number,
// which decides the encoding's class, its ISO-style name and the ICU table
// that converts it. Conversions among UTF-8, UTF-16 and the font-specific
// form (one byte per code point) are done by the library; everything else
// goes through ICU, with "?" for characters the target cannot hold.
//
//   zuGxCharConverter sjis("SJIS");               // code page 943
//   char utf8[64];
//   unsigned int bytes = zuCharConverter::UTF8()->Convert(
//       utf8, sizeof utf8, &sjis, "\x93\xfa\x96\x7b", 4);  // 6 bytes, NUL added
//
// The class also carries the library's character-class tests by code point.
//
// Threads: a converter is a small value that is only read once built; the
// ICU converters behind it are opened per thread (thread-local slot 2, eight
// per thread, most recently used first), so conversions take no lock.
#pragma once

#include "zu/core/zuExport.h"
#include "zu/core/zuUnicode.h"

class zuString;

class ZU_EXPORT zuCharConverter {
 public:
  virtual ~zuCharConverter();

  // A new converter for the encoding `name`; the caller deletes it.
  virtual zuCharConverter* Clone(const char* name) const = 0;
  // The character after the one at `p` in this encoding; `p` itself at a
  // NUL (a 0 unit for UTF-16 and UTF-32), so that a walk stops there.
  virtual char* NextChar(char* p) const = 0;
  // The start of the character before `p`, never before `start`.
  virtual char* PrevChar(char* start, char* p) const = 0;
  // Decodes `inBytes` bytes of this encoding into at most `outMax` code
  // points and returns their count.
  virtual unsigned int ConvertFromMB(unsigned int* out, unsigned int outMax, const char* in,
                                     unsigned int inBytes) const = 0;
  // Encodes `count` code points into at most `outBytes` bytes of this
  // encoding and returns the byte count.
  virtual unsigned int ConvertToMB(char* out, unsigned int outBytes, const unsigned int* in,
                                   unsigned int count) const = 0;
  // Converts `inBytes` bytes from `from`'s encoding into this one, writing at
  // most `outBytes` bytes, and returns the byte count; a NUL (two for UTF-16)
  // follows when it fits. A null `out` returns the worst case, 6 bytes per
  // input byte. An ICU failure (an output buffer too small included) and a
  // null `from` or `in` give 0.
  virtual unsigned int Convert(char* out, unsigned int outBytes, const zuCharConverter* from,
                               const char* in, unsigned int inBytes) const = 0;
  // The ICU table name of `codePage` ("IBM-5348" for 1252), or "".
  virtual const char* PlatformName(int codePage) const;

  // --- Identity -------------------------------------------------------------

  // The platform name of the encoding (at most 31 characters).
  const char* CodePage() const { return codePageName_; }
  int CodePageNum() const { return codePage_; }
  // Switches to the encoding `name` (code page 0 when it is unknown).
  void CodePageName(const char* name);
  // The ISO/IANA-style name: "Shift_JIS", "windows-1252", "latin1" ...; the
  // platform name for pages without one, "" for page 0.
  const char* ISOCodePage() const;
  // With legacy names set, 943 reports "Shift-JIS" and 1363 "KSC5601".
  int LegacyISONames() const { return legacyISONames_; }
  void LegacyISONames(int legacy) { legacyISONames_ = legacy; }
  // 1 big-endian (65003), 2 little-endian (65004), else 0.
  eEndianType ByteOrder() const { return byteOrder_; }

  // The canonical form of an encoding name: ASCII punctuation and spaces
  // dropped, letters upper-cased, a leading "CP" and "CS" and the first
  // "ISO", "IBM" and "WINDOWS" removed ("windows-1252" gives "1252").
  static zuString Canonicalize(const char* name);
  // The code page of an encoding name: looked up in canonical form, else
  // read as a number with the legacy numbers translated (5 is 1252, 10 is
  // 943 ...). A name of 30 bytes or more is read as a number as it stands.
  // 0 when it names nothing.
  static int ExtractCodePageNum(const char* name);

  // --- Class tests ----------------------------------------------------------

  int IsUTF8CodePage() const { return IsUTF8CodePage(codePage_); }
  int IsUTF16CodePage() const { return IsUTF16CodePage(codePage_, nullptr); }
  // 65005..65007.
  int IsUTF32CodePage() const;
  // 101: each byte is its own code point.
  int IsFontCodePage() const { return codePage_ == 101; }
  // The double-byte pages 932, 936, 943, 949, 1363, 1373, 1383, 1386, 2566
  // and the ISO-2022 pages 50220, 50222, 50225.
  int IsDBCSCodePage() const;
  // GB18030 (1392), the one page whose characters take up to four bytes.
  int IsQBCSCodePage() const { return codePage_ == 1392; }
  // 1 when `byte` starts a character of two or more bytes: from ICU's table
  // for double- and four-byte pages, C2..F4 for UTF-8, else 0 (stateful
  // ISO-2022 text has no lead bytes by value). Opens the ICU converter in the
  // calling thread's cache.
  int IsMBLeadByte(char byte) const;

  static int IsUTF8CodePage(int codePage) { return codePage == 65001; }
  // 65002..65004; `order`, when given, receives the byte order (0 for 65002).
  static int IsUTF16CodePage(int codePage, eEndianType* order);
  // The pages Windows used as a system (ANSI) page: 874, 932, 936, 949, 950,
  // 1250..1258, and the tables that stand for them here (943, 1363, 1373,
  // 1386, 5346..5354, 9447).
  static int IsAnsiCodePage(int codePage);
  // The DOS (OEM) pages: 437, 737, 775, 850, 852, 855, 857, 858, 860..866,
  // 869.
  static int IsOEMCodePage(int codePage);
  // "UTF-8" for text starting EF BB BF, "UTF-16LE" for FF FE, "UTF-16BE" for
  // FE FF, else "". Reads no further than a NUL.
  static const char* IsUTFData(const char* bytes);

  // --- Character classes (by code point) -------------------------------------

  // Only the ASCII white space: tab, LF, VT, FF, CR, space.
  static int IsSpace(unsigned int c);
  // A-Z, U+00C0..U+00D6, U+00D8..U+00DF.
  static int IsUpper(unsigned int c);
  // a-z, U+00E0..U+00F6, U+00F8..U+00FF.
  static int IsLower(unsigned int c);
  // 0-9 below 128, else a Unicode decimal number.
  static int IsDigit(unsigned int c);
  // ASCII letters below 128, else a Unicode letter (any L category).
  static int IsAlpha(unsigned int c);
  static int IsAlnum(unsigned int c);
  // U+00A0, U+202F or a Unicode space separator.
  static int IsUniSpace(unsigned int c);
  // A space a line may break at: IsUniSpace without the no-break spaces
  // (line-break class GL).
  static int IsUniBrkSpace(unsigned int c);
  // A letter in XML's sense: categories Lu, Ll, Lt, Lo and Nl.
  static int IsXMLLetter(unsigned int c);
  // Characters that break like ideographs (line-break class ID).
  static int IsIdeo(unsigned int c);
  // Below U+0250, or in the Latin script.
  static int IsLatin(unsigned int c);

  // Line-break classes (Unicode line-break property):
  // before: BB, B2, ID, H2, H3, CB; after: BA, B2, HY, SP, ZW, ID, H2, H3, CB;
  // mandatory: BK, CR, LF, NL; open: OP; close: CL, CP; exclamation: EX;
  // glue: GL, WJ; non-starter: NS, CJ; numeric infix: IS; ambiguous quote:
  // QU; numeric prefix: PR; numeric postfix: PO.
  static int IsOkBreakBefore(unsigned int c);
  static int IsOkBreakAfter(unsigned int c);
  static int IsMandatoryBreak(unsigned int c);
  static int IsOpenPunct(unsigned int c);
  static int IsClosePunct(unsigned int c);
  static int IsExclamation(unsigned int c);
  static int IsGlue(unsigned int c);
  static int IsNonStarter(unsigned int c);
  static int IsNumericInfix(unsigned int c);
  static int IsAmbiguousQuote(unsigned int c);
  static int IsNumericPrefix(unsigned int c);
  static int IsNumericPostfix(unsigned int c);

  // a-z, U+00E0..U+00F6 and U+00F8..U+00FE lose bit 5 (so U+00FF and U+00DF
  // stay); ToLower the reverse. Everything else is returned unchanged.
  static unsigned int ToUpper(unsigned int c);
  static unsigned int ToLower(unsigned int c);

  // A new NUL-terminated array (4 zero bytes, enough for any encoding)
  // holding `codePoint` in this encoding; `bytes` receives its byte count.
  // The caller frees it with delete[]. Throws zuExMemory.
  char* GetAllocdChar(unsigned int codePoint, unsigned int& bytes) const;

  // --- Predefined converters ---------------------------------------------------
  // Made on first use and kept for the process; safe to share between threads.

  static const zuCharConverter* UTF8();
  static const zuCharConverter* UTF16LE();
  static const zuCharConverter* UTF16BE();
  static const zuCharConverter* UTF16Host();  // little-endian
  static const zuCharConverter* UTF32LE();
  static const zuCharConverter* UTF32BE();
  static const zuCharConverter* UTF32Host();  // little-endian
  // The converter for the C library's character set (nl_langinfo(CODESET)
  // of the current LC_CTYPE, read on first use), unless replaced. An unknown
  // character set gives UTF-8.
  static const zuCharConverter* Default();
  // Replaces the default converter (the caller keeps ownership and keeps it
  // alive); null goes back to the C library's character set.
  static void Default(const zuCharConverter* converter);

 protected:
  explicit zuCharConverter(int codePage);
  zuCharConverter(const zuCharConverter& other) = default;
  zuCharConverter& operator=(const zuCharConverter& other) = default;

  void SetCodePage(int codePage);

 private:
  int codePage_ = 0;
  char codePageName_[32] = {};
  int legacyISONames_ = 0;
  eEndianType byteOrder_ = eEndianUnknown;
};
