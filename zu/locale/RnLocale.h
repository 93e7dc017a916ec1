// RnLocale: a small handle naming one supported locale, or a locale the
// calling thread registered at run time.
//
// Names are resolved the way users write them: 'en-us', 'de_CH',
// 'az_cyrl_az' and 'fr_FR.iso88591@euro' all find their row of the built-in
// map. An unknown name gives an invalid handle; nothing here throws for a bad
// name, and there is no fallback from a country to its language (callers that
// need a usable locale substitute getDEFAULT_LOCALE() themselves).
//
//   RnLocale swiss("de-ch");
//   swiss.getName();                     // "de_CH"
//   swiss.getWinLCID();                  // 2055
//   RnLocale(RnLocale::Arabic_Egypt).isBIDI();   // true
//   RnLocale("de_XX").isValid();         // false
//
// The handle is a signed 32-bit integer: 1 to 190 index the static map, a
// negative value -j names entry j of the calling thread's registry (see
// update), 0 is invalid. Registry handles belong to the thread that made them
// and shift when that thread registers or releases other names.
#pragma once

#include <cstdint>

#include "zu/core/zuExport.h"
#include "zu/core/zuLiteral.h"
#include "zu/core/zuString.h"

// A locale registered at run time by one thread: three owned strings.
struct ZU_EXPORT RnRunTimeDesc_s {
  zuString name;      // normalised name without its code set
  zuString descName;  // descriptive name
  zuString codeSet;   // code set, empty when none was given
};

class ZU_EXPORT RnLocale {
 public:
  // One constant per map row, named after the language and country in
  // English (English_US is "en_US", German_Switzerland is "de_CH", C is "c"),
  // plus English_US_Posix ("en_US_POSIX", which has no row of its own).
#include "zu/locale/RnLocaleNames.generated.h"

  // --- Construction and identity --------------------------------------------

  // The invalid handle.
  RnLocale() = default;
  // Resolves `name`: normalise, search the thread's registry and then the
  // map, and once more without a code set or modifier. Null, empty or
  // unknown names give the invalid handle. Allocation-free for names shorter
  // than 64 bytes.
  RnLocale(const char* name);
  RnLocale(const zuString& name);
  RnLocale(const RnLocale& other) = default;
  RnLocale& operator=(const RnLocale& other) = default;

  // Compares the canonical names (getName()), not the handles.
  bool operator==(const RnLocale& other) const;
  bool operator!=(const RnLocale& other) const {
    return !(*this == other);
  }

  bool isValid() const {
    return handle_ != 0;
  }
  // The handle itself (see above).
  int32_t getHandle() const {
    return handle_;
  }
  // The canonical name; "x" for the invalid handle. The text lives as long as
  // the map row or the registry entry.
  const char* getName() const;
  const char* getIsoName() const {
    return getName();
  }
  // The descriptive platform name ("German_Germany"); "" for a registry entry
  // without one.
  const char* getWinName() const;
  // The code-set name ("iso88591").
  const char* getCharSet() const;
  // The published platform locale id (1031 for "de_DE"); 0 for a registry
  // entry.
  unsigned long getWinLCID() const;
  // The language's own name for itself ("Deutsch"), from ICU; the
  // descriptive name where ICU has fewer than four characters, and for a
  // registry entry.
  zuString getDescName() const;

  // --- Script and family tests (false for the invalid handle) ---------------

  bool isArabic() const;                 // name begins with "ar"
  bool isChinese() const;                // name begins with "zh"
  bool isSimplifiedChinese() const;      // "zh_CN" or "zh_HK"
  bool isTraditionalChinese() const;     // "zh_TW"
  bool isJapanese() const;               // name begins with "ja"
  bool isKorean() const;                 // name begins with "ko"
  bool isKoreanHani() const;             // "ko_KR_HANI"
  bool isThai() const;                   // name begins with "th"
  bool isBIDI() const;                   // Arabic, Hebrew or Persian
  bool isIdeographic() const;            // Japanese, Korean or Chinese
  bool needsDictionaryBreaking() const;  // Thai

  // --- Name services --------------------------------------------------------

  // The canonical spelling: the first "-" becomes "_", a four-letter script
  // after the language is re-cased ("Cyrl"), and the country is upper-cased
  // up to a "." or "@" ('az_cyrl_az' gives "az_Cyrl_AZ"). The language, the
  // code set and the modifier keep their case. Empty when out of memory.
  static zuString normalize(const char* name);
  // `name` cut at its first "." or "@"; `wasQualified` tells whether either
  // was present. Empty when neither was.
  static zuString dequalify(const zuString& name, bool& wasQualified);
  // The handle for an already normalised name: a registry entry (negative),
  // else a map row (case-insensitive), else 0.
  static int searchMap(const zuString& name);
  // "en_US", the locale callers fall back to.
  static const zuLiteral& getDEFAULT_LOCALE();

  // --- The thread's platform locale -----------------------------------------

  // The canonical name of the calling thread's locale: the one recorded by
  // setLocale (by its locale id: 20 gives "nb", 1044 "nb_NO", 2068 "nn_NO",
  // any other id the last row that carries it); without one, the user's
  // default from LC_ALL, LC_MESSAGES or LANG. "x" when that does not
  // resolve. The argument is not consulted.
  static zuString getLocale(unsigned int unused = 0);
  // Records the locale of `name` for the calling thread and sets the C
  // library's locale (process-wide) to NAME.UTF-8 ("C" for "c"; the
  // environment's for an unknown name). A failing setlocale is ignored.
  static void setLocale(const zuString& name);

  // --- Registry of user-defined locales (per thread, nothing locked) --------

  // Registers `name` for the calling thread, replacing an entry of the same
  // name. The name is normalised; a code set after "." is split off into the
  // entry. The entry takes its descriptive name from `base` (the descriptive
  // name of the locale `base` resolves to, else `base` itself) and, without
  // a code set of its own, base's code set. Throws zuExMemory.
  static void update(const zuString& name, const zuString& base);
  // The registry position (1-based) of an exactly matching name; 0 when
  // absent or when the thread has no registry.
  static unsigned int get(const zuString& name);
  // The entry at a position; null when out of range. Owned by the registry.
  static RnRunTimeDesc_s* get(unsigned int position);
  // Takes the entry out of the thread's registry (when it is there) and frees
  // it with its strings.
  static void release(RnRunTimeDesc_s* entry);
  // Releases every entry of the thread's registry except one named "x" with
  // the descriptive name "XXX".
  static void reset();

  // --- System numeric conventions -------------------------------------------

  // The symbols of the system locale (getLocale(), "en_US" when that does not
  // resolve), from its RnData: currency symbol, minus, plus, decimal point,
  // grouping separator.
  static zuString CurrencySymbol();
  static zuString NegativeSign();
  static zuString PositiveSign();
  static zuString DecimalPoint();
  static zuString ThousandsSep();

  // The C library's current decimal separator: the second character of 1.0
  // printed with "%2.1f". Read on every call, so it follows setlocale; code
  // that reformats printf output (zuString::Number) finds the point with it.
  static zuString SystemDecimalPoint();
  static char SystemDecimalPointAsChar();
  // Drops cached numeric conventions. Nothing is cached: the conventions are
  // read on every call, so this only keeps the interface whole.
  static void resetLocaleConv();

 private:
  int32_t handle_ = 0;
};
