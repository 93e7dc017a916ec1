#include "zu/runtime/zuTraceHandler.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <utility>

#include "zu/runtime/internal/zuThreadId.h"
#include "zu/runtime/internal/zuTraceRegistry.h"
#include "zu/runtime/zuTrace.h"
#include "zu/runtime/zuTraceHandlerTLS.h"

namespace {

constexpr std::string_view kTimingName = "timing";

std::string_view viewOf(const zuString& text) {
  return std::string_view(static_cast<const char*>(text), text.Length());
}

// The level of an activation token: the decimal number after the name's
// ":", 0 when missing, not decimal or beyond 32 bits.
unsigned int parseLevel(std::string_view digits) {
  unsigned int level = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), level);
  const bool decimal = !digits.empty() && digits[0] >= '0' && digits[0] <= '9';
  return decimal && error == std::errc() && end == digits.data() + digits.size() ? level : 0;
}

// printf's "%-3u".
void appendNumber(std::string& line, unsigned int number) {
  char digits[16];
  const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
  line.append(digits, end);
  if (end - digits < 3) line.append(3 - (end - digits), ' ');
}

// printf's "%s": the bytes before the first NUL.
void appendText(std::string& line, const zuString& text) {
  line.append(static_cast<const char*>(text));
}

}  // namespace

zuTraceHandler::zuTraceHandler(unsigned int threadId)
    : threadId_(threadId != 0 ? threadId : zu::internal::currentThreadId()) {}

zuTraceHandler::~zuTraceHandler() {
  zuTraceHandlerTLS* holder = zuTraceHandlerTLS::find(threadId_);
  if (holder != nullptr && holder->handler_ == this) {
    holder->handler_ = nullptr;
    holder->ownsHandler_ = false;
  }
}

// --- Emitting --------------------------------------------------------------------

void zuTraceHandler::trace(const zuString& name, unsigned int level, zuFormatPos& message) {
  if (isActive(name, level) != 0) emit(name, message.ResId(), message.GetString());
}

void zuTraceHandler::trace(const zuTrace& trace, unsigned int level, unsigned int messageId,
                           const zuString& text) {
  this->trace(trace.getName(), level, messageId, text);
}

void zuTraceHandler::trace(const zuString& name, unsigned int level, unsigned int messageId,
                           const zuString& text) {
  if (isActive(name, level) != 0) emit(name, messageId, text);
}

void zuTraceHandler::trace(const zuTrace& trace, unsigned int level, zuFormatPos& message) {
  this->trace(trace.getName(), level, message);
}

void zuTraceHandler::emit(const zuString& name, unsigned int messageId, const zuString& text) {
  line_.clear();
  const std::size_t nameStart = line_.size();
  appendText(line_, name);
  if (line_.size() - nameStart < width_) line_.append(width_ - (line_.size() - nameStart), ' ');
  line_.append(" trace: mid=");
  appendNumber(line_, messageId);
  line_.append(" tid=");
  appendNumber(line_, threadId_);
  line_.append(" msg: ");
  appendText(line_, text);
  line_.push_back('\n');

  const zuTraceHandlerTLS* holder = zuTraceHandlerTLS::find(threadId_);
  if (holder != nullptr && holder->getAmendMsgCallback() != nullptr) {
    unsigned int amendedId = messageId;
    const zuString amendment =
        holder->getAmendMsgCallback()(amendedId, holder->getAmendMsgContext());
    if (!amendment.IsEmpty()) {
      line_.append("   trace: mid=");
      appendNumber(line_, amendedId);
      line_.append(" tid=");
      appendNumber(line_, threadId_);
      line_.append(" msg: ");
      appendText(line_, amendment);
      line_.push_back('\n');
    }
  }
  // One write and one flush per message: the stream's lock keeps the lines
  // of different threads whole.
  std::fwrite(line_.data(), 1, line_.size(), stdout);
  std::fflush(stdout);
}

// --- Activation ------------------------------------------------------------------

void zuTraceHandler::activate(const zuString& spec) {
  const zuString& white = zuString::WhiteSpace();
  const unsigned int length = spec.Length();
  unsigned int start = spec.SkipOver(white, 0);
  while (start < length) {
    // SkipUntil and SkipOver count bytes from their start.
    const unsigned int end = start + spec.SkipUntil(white, start);
    const std::string_view token = viewOf(spec).substr(start, end - start);
    const std::size_t colon = token.find(':');
    const std::string_view name = token.substr(0, colon);
    if (!name.empty()) {
      const unsigned int level =
          colon == std::string_view::npos ? 0 : parseLevel(token.substr(colon + 1));
      activateName(name, level);
    }
    start = end + spec.SkipOver(white, end);
  }
}

void zuTraceHandler::activate(const zuString& name, unsigned int level) {
  activateName(viewOf(name), level);
}

void zuTraceHandler::activateName(std::string_view key, unsigned int level) {
  if (key == kTimingName) {
    timingTraceEnabled(level > 0 ? 1 : 0);
    resetTiming();
  }
  const bool isNew = levels_.insert_or_assign(std::string(key), level).second;
  refreshCache(key, level);
  if (isNew) learnRegisteredTraces();
  zu::internal::TraceRegistry::instance().activate(key);
}

void zuTraceHandler::activate(zuTrace& trace, unsigned int level) {
  activate(trace.getName(), level);
}

void zuTraceHandler::deactivate(const zuString& name) {
  const auto found = levels_.find(viewOf(name));
  if (found != levels_.end()) levels_.erase(found);
  refreshCache(viewOf(name), 0);
}

void zuTraceHandler::refreshCache(std::string_view name, unsigned int level) {
  cachedName_.assign(name);
  cachedLevel_ = level;
  cacheValid_ = true;
}

int zuTraceHandler::isActive(const zuString& name, unsigned int level) {
  const std::string_view key = viewOf(name);
  if (!cacheValid_ || key != cachedName_) {
    const auto found = levels_.find(key);
    refreshCache(key, found != levels_.end() ? found->second : 0);
  }
  return cachedLevel_ != 0 && cachedLevel_ >= level ? 1 : 0;
}

void zuTraceHandler::learnRegisteredTraces() {
  for (auto& entry : zu::internal::TraceRegistry::instance().unknownTo(known_)) {
    width_ = std::max(width_, static_cast<unsigned int>(entry.name.size()));
    known_.emplace(std::move(entry.name), entry.messageId);
  }
}

zuString zuTraceHandler::dumpAvailable(int withLevels) const {
  std::string text;
  bool first = true;
  for (const auto& [name, messageId] : known_) {
    if (!std::exchange(first, false)) text.push_back('\n');
    if (withLevels != 0) text.push_back('\t');
    text.append(name);
    if (withLevels != 0) {
      text.append(" - ");
      appendText(text, zuString(messageId));
    }
  }
  return zuString(text.data(), static_cast<unsigned int>(text.size()));
}

// --- Registration -----------------------------------------------------------------

void zuTraceHandler::registerTraceHandler(zuTraceHandler* handler) {
  if (handler == nullptr) return;
  zuTraceHandlerTLS::getTraceHandlerTLS(handler->threadId_)->setTraceHandler(handler);
}

void zuTraceHandler::unregisterTraceHandler(unsigned int threadId) {
  if (zuTraceHandlerTLS* holder = zuTraceHandlerTLS::find(threadId)) {
    holder->setTraceHandler(nullptr);
  }
}

void zuTraceHandler::setAmendMsgCallback(AmendMsgCallback callback, void* context) {
  zuTraceHandlerTLS::getTraceHandlerTLS(0)->setCurrentAmendMsgCallback(callback, context);
}
