// zupic: formats and parses values through picture clauses in the library's
// built-in locales.
//
//   zupic format 'date{EEEE, D MMMM YYYY}' 2024-03-05 --locale fr_FR
//   seq 1 1000000 | zupic format 'num{z,zzz,zz9}' --locale de_DE
//   zupic parse 'num{z,zz9.99}' '1.234,50' --locale de_DE
//   zupic date format 5 2024-03-05 --locale fr_FR
//   zupic length 72pt 6pc 25.4mm --to in
//   zupic serve --port 0
//   zupic base64 encode < picture.png > picture.b64
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "tools/zupic/zupicCommands.h"
#include "zu/locale/RnLocale.h"

namespace {

constexpr const char* kUsage =
    "usage: zupic format PICTURE [VALUE...] [--locale L] [-j N]\n"
    "       zupic parse PICTURE [TEXT...] [--locale L] [-j N]\n"
    "       zupic date format FMT|all [DATE...] [--locale L] [--split N]\n"
    "       zupic date parse FMT [TEXT...] [--locale L] [--split N]\n"
    "       zupic date add|subtract DATE Y M D\n"
    "       zupic date diff DATE DATE\n"
    "       zupic time format FORM [TIME...]\n"
    "       zupic time parse [TEXT...]\n"
    "       zupic length [TEXT...] [--to U] [--unit U] [--decimals N]\n"
    "       zupic locales\n"
    "       zupic locale L\n"
    "       zupic serve [--port N] [--host ADDRESS]\n"
    "       zupic base64 encode [--no-breaks] | zupic base64 decode\n"
    "       zupic --help | --version\n";

constexpr const char* kHelp =
    "Formats and parses values through picture clauses.\n"
    "\n"
    "  format PICTURE [VALUE...]  prints each value formatted through PICTURE\n"
    "  parse PICTURE [TEXT...]    prints the canonical value of each TEXT\n"
    "  length [TEXT...]           reads each TEXT as a length (\"1.5in\", \"2 cm\",\n"
    "                             \"6 picas\") and prints it, converted with --to\n"
    "  date format FMT [DATE...]  prints each date in the named date format FMT\n"
    "                             (0..31; all: the formats 1..31 of each date)\n"
    "  date parse FMT [TEXT...]   prints the date each TEXT names in format FMT\n"
    "  date add DATE Y M D        adds years, months and days (carrying forward only)\n"
    "  date subtract DATE Y M D   subtracts years, months and days\n"
    "  date diff DATE DATE        the years, months and days between, and the days\n"
    "  time format FORM [TIME...] prints each time in form FORM (0..6)\n"
    "  time parse [TEXT...]       prints the time each TEXT names\n"
    "  locales                    lists the built-in locales\n"
    "  locale L                   shows the names, patterns and symbols of L\n"
    "  serve                      serves the playground page on 127.0.0.1:8080\n"
    "                             (zupic serve --help tells more)\n"
    "  base64 encode              encodes standard input as Base64 in lines of\n"
    "                             76 characters (--no-breaks: one line, no line\n"
    "                             feed at the end)\n"
    "  base64 decode              decodes Base64 from standard input (LF or CRLF\n"
    "                             lines); invalid input is an error\n"
    "\n"
    "Without VALUE or TEXT, values are read from standard input, one a line.\n"
    "Canonical values: dates 2024-03-05, times 13:45:00[.250], date-times\n"
    "2024-03-05T13:45:00, numbers with '.' as the decimal point.\n"
    "Date formats: 1 YYMMDD, 2 MM/DD/YY, 5 MMMM D, YYYY, 21 YYYY-MM-DD, 25 the\n"
    "era form, 28 and 30 the locale's medium and short formats (see zuDate.h).\n"
    "Time forms: 0 140509007, 1 14:05:09:007, 2 14:05:09, 3 14:05, 4-6 the same\n"
    "on the 12-hour dial with AM or PM.\n"
    "\n"
    "Options:\n"
    "  --locale L   the locale (default: from LC_ALL, LC_MESSAGES or LANG,\n"
    "               else en_US)\n"
    "  --to U       length: the unit to convert into; U is in, cm, mm, pt,\n"
    "               mp (millipoints) or pc (picas), in any case\n"
    "  --unit U     length: the unit of bare numbers (default in)\n"
    "  --decimals N length: at most N decimals, 0 to 8 (default 8)\n"
    "  --no-breaks  base64 encode: no line breaks\n"
    "  -j N, --jobs N\n"
    "               format and parse: standard input on N threads, results\n"
    "               in input order (default: the number of processors)\n"
    "  --split N    dates: two-digit years below N are 20YY, others 19YY\n"
    "               (default 0: every two-digit year is 20YY)\n"
    "  --help       this text\n"
    "  --version    the version\n"
    "\n"
    "Exit status: 0 every value matched, 1 a value did not match (or was no\n"
    "length) or the library reported an error, 2 usage error.\n"
    "\n"
    "Examples:\n"
    "  zupic format 'date{EEEE, D MMMM YYYY}' 2024-03-05 --locale fr_FR\n"
    "  zupic format 'num{z,zz9.99}' 1234.5 --locale de_DE\n"
    "  zupic parse 'date.short{}' 3/5/24\n"
    "  zupic base64 encode < picture.png > picture.b64\n"
    "  zupic date format all 2024-03-05 --locale ja\n"
    "  zupic date diff 2024-02-29 2023-01-31\n"
    "  zupic time parse '2:30 pm'\n"
    "  zupic length 72pt 6pc 25.4mm --to in\n";

int usageError(const char* message) {
  std::fprintf(stderr, "zupic: %s\n%s", message, kUsage);
  return zupic::kUsage;
}

// The locale of the environment as the library resolves it, else en_US.
std::string environmentLocale() {
  const zuString name = RnLocale::getLocale();
  const RnLocale locale(name);
  return locale.isValid() ? locale.getName()
                          : static_cast<const char*>(RnLocale::getDEFAULT_LOCALE());
}

// The field of `options` that a length option ("--to", "--to=cm") sets;
// null for any other argument.
std::string* lengthOption(const std::string& argument, zupic::LengthOptions& options) {
  const std::string name = argument.substr(0, argument.find('='));
  if (name == "--to") return &options.to;
  if (name == "--unit") return &options.unit;
  if (name == "--decimals") return &options.decimals;
  return nullptr;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> words;
  std::string locale;
  bool localeGiven = false;
  bool noBreaks = false;
  long split = 0;
  long jobs = std::max(1u, std::thread::hardware_concurrency());
  bool jobsGiven = false;
  zupic::LengthOptions length;
  bool lengthGiven = false;
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    if (words.empty() && argument == "serve") {
      return zupic::serve(std::vector<std::string>(argv + i + 1, argv + argc));
    }
    if (argument == "--help" || argument == "-h") {
      std::printf("%s\n%s", kUsage, kHelp);
      return zupic::kOk;
    }
    if (argument == "--version") {
      std::printf("zupic %s\n", ZUPIC_VERSION);
      return zupic::kOk;
    }
    if (argument == "--locale" || argument == "-l") {
      if (i + 1 >= argc) return usageError("--locale needs a locale name");
      locale = argv[++i];
      localeGiven = true;
    } else if (argument == "-j" || argument == "--jobs" || argument.rfind("--jobs=", 0) == 0 ||
               (argument.rfind("-j", 0) == 0 && argument.size() > 2)) {
      const size_t attachedAt = argument[1] == 'j' ? 2 : 7;
      const bool attached = argument.size() > attachedAt;
      if (!attached && i + 1 >= argc) return usageError("-j needs a number of threads");
      const std::string value = attached ? argument.substr(attachedAt) : argv[++i];
      char* end = nullptr;
      jobs = std::strtol(value.c_str(), &end, 10);
      if (value.empty() || *end != '\0' || jobs < 1 || jobs > 1024) {
        return usageError("-j needs a number of threads from 1 to 1024");
      }
      jobsGiven = true;
    } else if (argument == "--split" || argument.rfind("--split=", 0) == 0) {
      const bool attached = argument.size() > 7;
      if (!attached && i + 1 >= argc) return usageError("--split needs a number");
      const std::string value = attached ? argument.substr(8) : argv[++i];
      char* end = nullptr;
      split = std::strtol(value.c_str(), &end, 10);
      if (value.empty() || *end != '\0' || split < 0) {
        return usageError("--split needs a number of 0 or more");
      }
    } else if (argument.rfind("--locale=", 0) == 0) {
      locale = argument.substr(9);
      localeGiven = true;
    } else if (argument == "--no-breaks") {
      noBreaks = true;
    } else if (std::string* value = lengthOption(argument, length)) {
      const size_t equals = argument.find('=');
      if (equals != std::string::npos) {
        *value = argument.substr(equals + 1);
      } else if (i + 1 < argc) {
        *value = argv[++i];
      } else {
        return usageError((argument + " needs a value").c_str());
      }
      lengthGiven = true;
    } else if (argument == "--") {
      words.insert(words.end(), argv + i + 1, argv + argc);
      break;
    } else if (argument.size() > 1 && argument[0] == '-' && argument[1] == '-') {
      return usageError(("unknown option " + argument).c_str());
    } else {
      words.push_back(argument);
    }
  }
  if (words.empty()) return usageError("no command");
  const std::string command = words[0];
  if (lengthGiven && command != "length") {
    return usageError("--to, --unit and --decimals belong to length");
  }
  if (!localeGiven) locale = environmentLocale();
  if (command == "format" || command == "parse") {
    if (words.size() < 2) return usageError("no picture");
    const std::vector<std::string> values(words.begin() + 2, words.end());
    return zupic::runPicture(
        command == "format" ? zupic::Direction::kFormat : zupic::Direction::kParse, words[1],
        values, locale, static_cast<unsigned>(jobs));
  }
  if (jobsGiven) return usageError("-j applies to format and parse only");
  if (noBreaks && !(command == "base64" && words.size() > 1 && words[1] == "encode")) {
    return usageError("--no-breaks applies to base64 encode only");
  }
  if (command == "base64") {
    if (words.size() != 2 || (words[1] != "encode" && words[1] != "decode")) {
      return usageError("base64 needs encode or decode");
    }
    return zupic::runBase64(words[1] == "encode", !noBreaks);
  }
  if (command == "date" || command == "time") {
    const std::vector<std::string> rest(words.begin() + 1, words.end());
    return command == "date" ? zupic::runDate(rest, locale, split) : zupic::runTime(rest);
  }
  if (command == "length") {
    return zupic::runLength(std::vector<std::string>(words.begin() + 1, words.end()), length);
  }
  if (command == "locales") {
    if (words.size() != 1) return usageError("locales takes no argument");
    return zupic::listLocales();
  }
  if (command == "locale") {
    if (words.size() != 2 && !(words.size() == 1 && localeGiven)) {
      return usageError("locale needs one locale name");
    }
    return zupic::showLocale(words.size() == 2 ? words[1] : locale);
  }
  return usageError(("unknown command " + command).c_str());
}
