// The JSON answers of `zupic serve`, apart from HTTP: each operation takes
// the fields of a request and returns an HTTP status and a JSON body.
//
//   zupic::Answer answer = zupic::api::runPicture(
//       zupic::Direction::kFormat, {"num{z,zz9.99}", "de_DE", {"1234.5"}});
//   // answer.status 200, answer.body
//   // {"operation":"format","picture":"num{z,zz9.99}","locale":"de_DE",
//   //  "results":[{"value":"1234.5","text":"1.234,50","matched":true}]}
//
// Every function may run on any thread: the library's engines keep their
// caches per thread. None throws for bad input; bad input is a 4xx answer
// whose body is {"error":{"status":N,"message":"..."}}.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "tools/zupic/zupicCommands.h"

namespace zupic {

// An HTTP status and a JSON body.
struct Answer {
  int status = 200;
  std::string body;
};

namespace api {

// The bounds on one request.
constexpr size_t kMaxRequestBytes = 64 * 1024;
constexpr size_t kMaxValues = 10000;
constexpr std::chrono::milliseconds kTimeLimit{2000};

// One picture, one locale and the values to run through them.
struct PictureRequest {
  std::string picture;
  std::string locale;  // empty: en_US
  std::vector<std::string> values;
};

// {"error":{"status":status,"message":message}}.
Answer error(int status, const std::string& message);

// Reads a POST body {"picture":"...","locale":"...","values":["...",...]}
// into `request`; an empty answer (status 0) on success, else the error.
Answer readPictureBody(const std::string& body, PictureRequest& request);

// Formats or parses every value: 200 with one result per value (the text,
// whether it matched, the library's message id and text when it reported an
// error). 400 for invalid UTF-8, a missing picture or no value, or a picture
// ending inside a quoted literal; 413 for more than kMaxValues values; 503
// when the values take longer than kTimeLimit. A locale that is not built in
// is passed on as given and the answer says which locale the library used.
Answer runPicture(Direction direction, const PictureRequest& request);

// One picture and one value through every built-in locale (request.values
// must hold exactly one value).
Answer runAllLocales(Direction direction, const PictureRequest& request);

// The built-in locales: {"locales":[{"name","platformName","language"}...]}.
Answer listLocales();

// The names, patterns and symbols of one locale, as `zupic locale L` shows
// them: {"name":..., "fields":[{"label","value"}...]}; 404 for a name that
// is not built in.
Answer showLocale(const std::string& name);

// Whether `text` is well-formed UTF-8 (no overlong forms, no surrogates,
// nothing above U+10FFFF).
bool isValidUtf8(const std::string& text);

}  // namespace api
}  // namespace zupic
