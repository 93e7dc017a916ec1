// Feeds arbitrary bytes to the JSON API of zupic serve as a POST body, then
// runs whatever request was read through format and parse.
//
// Every answer must be a JSON object: 200 with one result per value, or an
// error whose status is one the API documents.
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>

#include "tools/zupic/zupicApi.h"

namespace {

void check(const zupic::Answer& answer, size_t values) {
  const nlohmann::json body = nlohmann::json::parse(answer.body, nullptr, false);
  if (!body.is_object()) __builtin_trap();
  if (answer.status == 200) {
    if (body["results"].size() != values) __builtin_trap();
  } else if (answer.status != 400 && answer.status != 413 && answer.status != 503) {
    __builtin_trap();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string body(reinterpret_cast<const char*>(data), size);
  zupic::api::PictureRequest request;
  const zupic::Answer read = zupic::api::readPictureBody(body, request);
  if (read.status != 0) {
    check(read, 0);
    return 0;
  }
  check(zupic::api::runPicture(zupic::Direction::kFormat, request), request.values.size());
  check(zupic::api::runPicture(zupic::Direction::kParse, request), request.values.size());
  return 0;
}
