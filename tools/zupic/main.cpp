// zupic: formats and parses values through picture clauses in the library's
// built-in locales.
//
//   zupic format 'date{EEEE, D MMMM YYYY}' 2024-03-05 --locale fr_FR
//   seq 1 1000000 | zupic format 'num{z,zzz,zz9}' --locale de_DE
//   zupic parse 'num{z,zz9.99}' '1.234,50' --locale de_DE
//   zupic length 72pt 6pc 25.4mm --to in
//   zupic serve --port 0
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "tools/zupic/zupicCommands.h"
#include "zu/locale/RnLocale.h"

namespace {

constexpr const char* kUsage =
    "usage: zupic format PICTURE [VALUE...] [--locale L]\n"
    "       zupic parse PICTURE [TEXT...] [--locale L]\n"
    "       zupic length [TEXT...] [--to U] [--unit U] [--decimals N]\n"
    "       zupic locales\n"
    "       zupic locale L\n"
    "       zupic serve [--port N] [--host ADDRESS]\n"
    "       zupic --help | --version\n";

constexpr const char* kHelp =
    "Formats and parses values through picture clauses.\n"
    "\n"
    "  format PICTURE [VALUE...]  prints each value formatted through PICTURE\n"
    "  parse PICTURE [TEXT...]    prints the canonical value of each TEXT\n"
    "  length [TEXT...]           reads each TEXT as a length (\"1.5in\", \"2 cm\",\n"
    "                             \"6 picas\") and prints it, converted with --to\n"
    "  locales                    lists the built-in locales\n"
    "  locale L                   shows the names, patterns and symbols of L\n"
    "  serve                      serves the playground page on 127.0.0.1:8080\n"
    "                             (zupic serve --help tells more)\n"
    "\n"
    "Without VALUE or TEXT, values are read from standard input, one a line.\n"
    "Canonical values: dates 2024-03-05, times 13:45:00[.250], date-times\n"
    "2024-03-05T13:45:00, numbers with '.' as the decimal point.\n"
    "\n"
    "Options:\n"
    "  --locale L   the locale (default: from LC_ALL, LC_MESSAGES or LANG,\n"
    "               else en_US)\n"
    "  --to U       length: the unit to convert into; U is in, cm, mm, pt,\n"
    "               mp (millipoints) or pc (picas), in any case\n"
    "  --unit U     length: the unit of bare numbers (default in)\n"
    "  --decimals N length: at most N decimals, 0 to 8 (default 8)\n"
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
    } else if (argument.rfind("--locale=", 0) == 0) {
      locale = argument.substr(9);
      localeGiven = true;
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
        values, locale);
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
