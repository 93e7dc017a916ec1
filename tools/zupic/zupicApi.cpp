// The JSON answers of zupic serve.
#include "tools/zupic/zupicApi.h"

#include <nlohmann/json.hpp>

#include "zu/locale/RnLocale.h"
#include "zu/picture/zuPicture.h"

namespace zupic::api {

namespace {

using Json = nlohmann::json;
using Clock = std::chrono::steady_clock;

constexpr const char* kDefaultLocale = "en_US";

Answer answer(int status, const Json& body) {
  return {status, body.dump(-1, ' ', false, Json::error_handler_t::replace)};
}

const char* operationName(Direction direction) {
  return direction == Direction::kFormat ? "format" : "parse";
}

Json outcomeJson(const Outcome& outcome) {
  Json result = {{"text", static_cast<const char*>(outcome.text)}, {"matched", outcome.matched}};
  if (outcome.errorId != 0) {
    result["error"] = {{"id", outcome.errorId}, {"message", outcome.errorText}};
  }
  return result;
}

// The checks every picture request passes before the engine sees it; an
// answer with status 0 when it may go on.
Answer checkRequest(const PictureRequest& request) {
  if (request.picture.empty()) return error(400, "no picture");
  if (request.values.empty()) return error(400, "no value");
  if (request.values.size() > kMaxValues) {
    return error(413, "more than " + std::to_string(kMaxValues) + " values in one request");
  }
  if (!isValidUtf8(request.picture)) return error(400, "the picture is not valid UTF-8");
  if (!isValidUtf8(request.locale)) return error(400, "the locale is not valid UTF-8");
  for (size_t i = 0; i < request.values.size(); ++i) {
    if (!isValidUtf8(request.values[i])) {
      return error(400, "value " + std::to_string(i + 1) + " is not valid UTF-8");
    }
  }
  zuStorage<zuString> alternates;
  if (!zuPicture::getAlternates(zuString(request.picture.c_str()), alternates)) {
    return error(400, "the picture ends inside a quoted literal");
  }
  return {0, {}};
}

// The locale the library uses for `name`, and in `notice` why when that is
// not the name itself.
std::string usedLocale(const std::string& name, std::string& notice) {
  if (name.empty()) return kDefaultLocale;
  const RnLocale locale(name.c_str());
  if (locale.isValid()) return locale.getName();
  notice = "\"" + name + "\" is not a built-in locale; the library used " + kDefaultLocale;
  return kDefaultLocale;
}

// The string member `field` of `json` into `out`, when there is one.
Answer readString(const Json& json, const char* field, std::string& out) {
  const auto found = json.find(field);
  if (found == json.end()) return {0, {}};
  if (!found->is_string()) return error(400, std::string(field) + " must be a string");
  out = found->get<std::string>();
  return {0, {}};
}

Answer tooSlow() {
  return error(503, "the request took longer than " + std::to_string(kTimeLimit.count()) +
                        " ms; send fewer values");
}

}  // namespace

Answer error(int status, const std::string& message) {
  return answer(status, {{"error", {{"status", status}, {"message", message}}}});
}

Answer readPictureBody(const std::string& body, PictureRequest& request) {
  const Json json = Json::parse(body, nullptr, false);
  if (json.is_discarded()) return error(400, "the body is not valid JSON (UTF-8)");
  if (!json.is_object()) return error(400, "the body must be a JSON object");
  if (Answer refused = readString(json, "picture", request.picture); refused.status != 0) {
    return refused;
  }
  if (Answer refused = readString(json, "locale", request.locale); refused.status != 0) {
    return refused;
  }
  const auto values = json.find("values");
  if (values == json.end()) return {0, {}};
  if (!values->is_array()) return error(400, "values must be an array of strings");
  if (values->size() > kMaxValues) {
    return error(413, "more than " + std::to_string(kMaxValues) + " values in one request");
  }
  for (const Json& value : *values) {
    if (!value.is_string()) return error(400, "values must be an array of strings");
    request.values.push_back(value.get<std::string>());
  }
  return {0, {}};
}

Answer runPicture(Direction direction, const PictureRequest& request) {
  if (Answer refused = checkRequest(request); refused.status != 0) return refused;
  std::string notice;
  const std::string locale = usedLocale(request.locale, notice);
  const PictureApplier applier(direction, request.picture,
                               request.locale.empty() ? locale : request.locale);
  const Clock::time_point deadline = Clock::now() + kTimeLimit;
  Json results = Json::array();
  for (const std::string& value : request.values) {
    if (Clock::now() > deadline) return tooSlow();
    Json result = outcomeJson(applier.apply(value.data(), value.size()));
    result["value"] = value;
    results.push_back(std::move(result));
  }
  Json body = {{"operation", operationName(direction)},
               {"picture", request.picture},
               {"locale", locale},
               {"results", std::move(results)}};
  if (!notice.empty()) body["notice"] = notice;
  return answer(200, body);
}

Answer runAllLocales(Direction direction, const PictureRequest& request) {
  if (Answer refused = checkRequest(request); refused.status != 0) return refused;
  if (request.values.size() != 1) return error(400, "all locales takes exactly one value");
  const std::string& value = request.values.front();
  const Clock::time_point deadline = Clock::now() + kTimeLimit;
  Json results = Json::array();
  for (const LocaleEntry& entry : builtInLocales()) {
    if (Clock::now() > deadline) return tooSlow();
    const PictureApplier applier(direction, request.picture, entry.name);
    Json result = outcomeJson(applier.apply(value.data(), value.size()));
    result["locale"] = entry.name;
    result["language"] = entry.language;
    results.push_back(std::move(result));
  }
  return answer(200, {{"operation", operationName(direction)},
                      {"picture", request.picture},
                      {"value", value},
                      {"results", std::move(results)}});
}

Answer listLocales() {
  Json locales = Json::array();
  for (const LocaleEntry& entry : builtInLocales()) {
    locales.push_back(
        {{"name", entry.name}, {"platformName", entry.platformName}, {"language", entry.language}});
  }
  return answer(200, {{"locales", std::move(locales)}});
}

Answer showLocale(const std::string& name) {
  std::vector<LocaleField> fields;
  if (!isValidUtf8(name) || !localeFields(name, fields)) {
    return error(404, "unknown locale \"" + name + "\" (see /api/locales)");
  }
  Json list = Json::array();
  for (const LocaleField& field : fields) {
    list.push_back({{"label", field.label}, {"value", field.value}});
  }
  return answer(200, {{"name", fields.front().value}, {"fields", std::move(list)}});
}

bool isValidUtf8(const std::string& text) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
  const size_t size = text.size();
  for (size_t i = 0; i < size;) {
    const unsigned char lead = bytes[i];
    if (lead < 0x80) {
      ++i;
      continue;
    }
    size_t length = 0;
    unsigned char low = 0x80, high = 0xBF;  // the range of the second byte
    if (lead >= 0xC2 && lead <= 0xDF) {
      length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
      length = 3;
      if (lead == 0xE0) low = 0xA0;   // no overlong forms
      if (lead == 0xED) high = 0x9F;  // no surrogates
    } else if (lead >= 0xF0 && lead <= 0xF4) {
      length = 4;
      if (lead == 0xF0) low = 0x90;   // no overlong forms
      if (lead == 0xF4) high = 0x8F;  // nothing above U+10FFFF
    } else {
      return false;
    }
    if (size - i < length || bytes[i + 1] < low || bytes[i + 1] > high) return false;
    for (size_t k = 2; k < length; ++k) {
      if ((bytes[i + k] & 0xC0) != 0x80) return false;
    }
    i += length;
  }
  return true;
}

}  // namespace zupic::api
