// zupic date ... / zupic time ...: dates and times as values, in the named
// date formats and time forms.
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "tools/zupic/zupicCommands.h"
#include "zu/datetime/zuDate.h"
#include "zu/datetime/zuTime.h"

namespace zupic {

namespace {

constexpr int kLastDateFormat = 31;
constexpr int kLastTimeForm = 6;

int usage(const char* message) {
  std::fprintf(stderr, "zupic: %s\nTry zupic --help.\n", message);
  return kUsage;
}

// A whole decimal number; false for anything else.
bool readNumber(const std::string& text, long& value) {
  if (text.empty()) return false;
  char* end = nullptr;
  errno = 0;
  value = std::strtol(text.c_str(), &end, 10);
  return errno == 0 && *end == '\0';
}

// A number in first..last, or -1.
int readChoice(const std::string& text, int first, int last) {
  long value = 0;
  return readNumber(text, value) && value >= first && value <= last ? static_cast<int>(value) : -1;
}

// YYYY-MM-DD, the fields as written (validated by zuDate).
bool readDate(const std::string& text, long& year, long& month, long& day) {
  int used = 0;
  return std::sscanf(text.c_str(), "%ld-%ld-%ld%n", &year, &month, &day, &used) == 3 &&
         static_cast<size_t>(used) == text.size();
}

// HH:MM, HH:MM:SS or HH:MM:SS.fff.
bool readTime(const std::string& text, long fields[4]) {
  fields[2] = fields[3] = 0;
  int used = 0;
  const char* chars = text.c_str();
  if (std::sscanf(chars, "%2ld:%2ld%n", &fields[0], &fields[1], &used) != 2) return false;
  int more = 0;
  if (chars[used] == ':' && std::sscanf(chars + used, ":%2ld%n", &fields[2], &more) == 1) {
    used += more;
    if (chars[used] == '.' && std::sscanf(chars + used, ".%3ld%n", &fields[3], &more) == 1) {
      if (more != 4) return false;
      used += more;
    }
  }
  return static_cast<size_t>(used) == text.size();
}

void writeDate(const zuDate& date) {
  std::printf("%04ld-%02ld-%02ld\n", date.Year(), date.Month(), date.Day());
}

bool notA(const char* what, const std::string& text) {
  std::fprintf(stderr, "zupic: \"%s\" is not a %s\n", text.c_str(), what);
  return false;
}

// A date of the command line in the chosen locale and split; throws the
// library's exception for a date that does not exist.
bool dateOf(const std::string& text, const std::string& locale, long split, zuDate& date) {
  long year = 0, month = 0, day = 0;
  if (!readDate(text, year, month, day)) return notA("date (YYYY-MM-DD)", text);
  date.Set(year, month, day);
  date.Locale(locale.c_str());
  date.CenturySplit(split);
  return true;
}

// Runs `run` on each value, writing an empty line for a value that fails.
int eachValue(const std::vector<std::string>& values,
              const std::function<bool(const std::string&)>& run) {
  const bool allRan = forEachValue(values, [&](const char* value, size_t length) {
    if (reportErrors([&] { return run(std::string(value, length)); })) return true;
    writeLine("", 0);
    return false;
  });
  return allRan ? kOk : kNoMatch;
}

int formatDates(const std::string& format, const std::vector<std::string>& values,
                const std::string& locale, long split) {
  const bool all = format == "all";
  const int fmt = all ? 0 : readChoice(format, 0, kLastDateFormat);
  if (fmt < 0) return usage("the date format is a number from 0 to 31, or all");
  return eachValue(values, [&](const std::string& text) {
    zuDate date(2000, 1, 1);
    if (!dateOf(text, locale, split, date)) return false;
    for (int each = all ? 1 : fmt; each <= (all ? kLastDateFormat : fmt); ++each) {
      const zuString shown = date.Format(static_cast<zuDate::zuDateFmt>(each));
      if (all) std::printf("%2d  ", each);
      writeLine(shown, shown.Length());
    }
    return true;
  });
}

int parseDates(const std::string& format, const std::vector<std::string>& values,
               const std::string& locale, long split) {
  const int fmt = readChoice(format, 1, kLastDateFormat);
  if (fmt < 0) return usage("the date format to parse is a number from 1 to 31");
  return eachValue(values, [&](const std::string& text) {
    zuDate date(2000, 1, 1);
    date.Locale(locale.c_str());
    date.CenturySplit(split);
    if (date.Parse(text.c_str(), static_cast<zuDate::zuDateFmt>(fmt)) == 0) {
      return notA("date in that format", text);
    }
    writeDate(date);
    return true;
  });
}

int moveDate(bool add, const std::vector<std::string>& words, const std::string& locale) {
  long amounts[3] = {0, 0, 0};
  if (words.size() != 5) return usage("add and subtract need a date and three amounts: Y M D");
  for (int i = 0; i < 3; ++i) {
    if (!readNumber(words[i + 2], amounts[i])) return usage("the amounts are whole numbers");
  }
  return eachValue({words[1]}, [&](const std::string& text) {
    zuDate date(2000, 1, 1);
    if (!dateOf(text, locale, 0, date)) return false;
    add ? date.Add(amounts[0], amounts[1], amounts[2])
        : date.Subtract(amounts[0], amounts[1], amounts[2]);
    writeDate(date);
    return true;
  });
}

// The days between two dates. DaysDifference counts from 1900 and only
// the day of the year before it, so earlier dates are first moved on by
// whole 400-year cycles (146097 days each), which keeps their distance.
long totalDays(zuDate first, zuDate second) {
  const long earliest = first.Year() < second.Year() ? first.Year() : second.Year();
  const long latest = first.Year() < second.Year() ? second.Year() : first.Year();
  const long shift = earliest < 1900 ? (1900 - earliest + 399) / 400 * 400 : 0;
  if (latest + shift <= zuDate::kMaxYear) {
    first.Add(shift, 0, 0);
    second.Add(shift, 0, 0);
  }
  long total = 0;
  first.DaysDifference(second, total);
  return total;
}

int diffDates(const std::vector<std::string>& words, const std::string& locale) {
  if (words.size() != 3) return usage("diff needs two dates");
  return eachValue({words[1]}, [&](const std::string& text) {
    zuDate first(2000, 1, 1), second(2000, 1, 1);
    if (!dateOf(text, locale, 0, first) || !dateOf(words[2], locale, 0, second)) return false;
    long years = 0, months = 0, days = 0;
    const int order = first.Difference(second, years, months, days);
    const long total = totalDays(first, second);
    const char* sign = order < 0 ? "-" : (order > 0 ? "+" : "");
    std::printf("%s%ldy %ldm %ldd = %s%ld days\n", sign, years, months, days, order < 0 ? "-" : "",
                total);
    return true;
  });
}

}  // namespace

int runDate(const std::vector<std::string>& words, const std::string& locale, long centurySplit) {
  if (words.empty()) return usage("date needs format, parse, add, subtract or diff");
  const std::string& command = words[0];
  const std::vector<std::string> rest(words.begin() + (words.size() > 1 ? 2 : 1), words.end());
  if (command == "format" || command == "parse") {
    if (words.size() < 2) return usage("no date format");
    return command == "format" ? formatDates(words[1], rest, locale, centurySplit)
                               : parseDates(words[1], rest, locale, centurySplit);
  }
  if (command == "add" || command == "subtract") return moveDate(command == "add", words, locale);
  if (command == "diff") return diffDates(words, locale);
  return usage(("unknown date command " + command).c_str());
}

int runTime(const std::vector<std::string>& words) {
  if (words.empty()) return usage("time needs format or parse");
  const std::string& command = words[0];
  if (command == "format") {
    const int form = words.size() < 2 ? -1 : readChoice(words[1], 0, kLastTimeForm);
    if (form < 0) return usage("the time form is a number from 0 to 6");
    const std::vector<std::string> values(words.begin() + 2, words.end());
    return eachValue(values, [&](const std::string& text) {
      long fields[4];
      if (!readTime(text, fields)) return notA("time (HH:MM[:SS[.fff]])", text);
      const zuString shown = zuTime(fields[0], fields[1], fields[2], fields[3])
                                 .Format(static_cast<zuTime::zuTimeFmt>(form));
      writeLine(shown, shown.Length());
      return true;
    });
  }
  if (command == "parse") {
    const std::vector<std::string> values(words.begin() + 1, words.end());
    return eachValue(values, [](const std::string& text) {
      zuTime time(0, 0, 0, 0);
      if (time.Parse(text.c_str()) == 0) return notA("time: a number is too large", text);
      std::printf("%02ld:%02ld:%02ld.%03ld\n", time.Hour(), time.Minute(), time.Second(),
                  time.Millisec());
      return true;
    });
  }
  return usage(("unknown time command " + command).c_str());
}

}  // namespace zupic
