#include "zu/core/zuException.h"

#include "zu/core/zuExErrItem.h"
#include "zu/core/zuFormat.h"
#include "zu/core/zuFormatPos.h"
#include "zu/core/zuMessageIds.h"
#include "zu/core/zuString.h"
#include "zu/runtime/internal/zuRaise.h"

namespace {

constexpr size_t kInitialCapacity = 4;

zuExErrItem itemFromFormat(unsigned short id, const zuString& text, const void* format,
                           zuExErrItem::tFormatType type) {
  zuExErrItem item(id, text);
  item.FormatObject(format, type);
  return item;
}

}  // namespace

// zuException -----------------------------------------------------------------

zuException::~zuException() = default;

void zuException::Resolve() {}

unsigned int zuException::Count() const {
  return 0;
}

const zuExErrItem& zuException::operator[](unsigned int) const {
  return EmptyItem();
}

const zuExErrItem& zuException::EmptyItem() {
  static const zuExErrItem empty;
  return empty;
}

// zuExFull --------------------------------------------------------------------

zuExFull::zuExFull() {
  items_.reserve(kInitialCapacity);
}

zuExFull::zuExFull(unsigned short id, int reported) : zuException(reported) {
  items_.reserve(kInitialCapacity);
  items_.emplace_back(id);
}

zuExFull::zuExFull(unsigned short id, const zuString& text, int reported) : zuException(reported) {
  items_.reserve(kInitialCapacity);
  items_.emplace_back(id, text);
}

zuExFull::zuExFull(const zuFormat& format, int reported)
    : zuExFull(format.ResId(), format, reported) {}

zuExFull::zuExFull(unsigned short id, const zuFormat& format, int reported)
    : zuException(reported) {
  items_.reserve(kInitialCapacity);
  items_.push_back(itemFromFormat(id, format.GetString(), &format, zuExErrItem::eFormat));
}

zuExFull::zuExFull(const zuFormatPos& format, int reported)
    : zuExFull(format.ResId(), format, reported) {}

zuExFull::zuExFull(unsigned short id, const zuFormatPos& format, int reported)
    : zuException(reported) {
  items_.reserve(kInitialCapacity);
  items_.push_back(itemFromFormat(id, format.GetString(), &format, zuExErrItem::eFormatPos));
}

zuExFull::zuExFull(const zuException& other, int) : zuException(other.WasReported()) {
  items_.reserve(kInitialCapacity);
}

zuExFull::zuExFull(const zuExFull& other) = default;

zuExFull& zuExFull::operator=(const zuExFull& other) = default;

zuExFull::~zuExFull() = default;

void zuExFull::Resolve() {
  for (zuExErrItem& item : items_) item.Resolve();
}

unsigned int zuExFull::Count() const {
  return static_cast<unsigned int>(items_.size());
}

const zuExErrItem& zuExFull::operator[](unsigned int index) const {
  return index < items_.size() ? items_[index] : EmptyItem();
}

int zuExFull::HasResId(unsigned short id) const {
  for (const zuExErrItem& item : items_) {
    if (item.ResId() == id) return 1;
  }
  return 0;
}

unsigned short zuExFull::FirstResId() const {
  return GetResId(0);
}

unsigned short zuExFull::GetResId(unsigned int index) const {
  return index < items_.size() ? items_[index].ResId() : 0;
}

void zuExFull::Insert(const zuExFull& other, int atEnd) {
  // Copy first: `other` may be this very exception.
  const std::vector<zuExErrItem> added = other.items_;
  if (atEnd) {
    items_.insert(items_.end(), added.begin(), added.end());
    return;
  }
  // Each item goes to the front in turn, which reverses their order.
  items_.insert(items_.begin(), added.rbegin(), added.rend());
}

zuString* zuExFull::String() {
  if (items_.empty()) return nullptr;
  Resolve();
  auto* joined = new zuString();
  for (const zuExErrItem& item : items_) {
    *joined += item.Text();
    *joined += '\n';
  }
  return joined;
}

// zuExMemory ------------------------------------------------------------------

zuExMemory::~zuExMemory() = default;

const char* zuExMemory::what() const noexcept {
  return "bad allocation";
}

unsigned int zuExMemory::Count() const {
  return 1;
}

const zuExErrItem& zuExMemory::operator[](unsigned int) const {
  // One item per thread rather than per process: resolving writes its text,
  // and a string belongs to the thread that fills it. Building it allocates
  // nothing, so it is safe to reach while memory is exhausted.
  thread_local zuExErrItem outOfMemory(zuMessageIds::kOutOfMemory);
  outOfMemory.Resolve();
  return outOfMemory;
}

// Throwing functions ----------------------------------------------------------

void ZuExThrow(unsigned short id, int reported) {
  throw zuExFull(id, reported);
}

void ZuExThrow(unsigned short id) {
  ZuExThrow(id, 0);
}

void ZuExThrow(const zuString& text, int reported) {
  ZuExThrow(zuFormat(text), reported);
}

void ZuExThrow(const zuString& text) {
  ZuExThrow(text, 0);
}

void ZuExThrow(const zuFormat& format, int reported) {
  throw zuExFull(format, reported);
}

void ZuExThrow(const zuFormat& format) {
  ZuExThrow(format, 0);
}

void ZuExThrow(const zuFormatPos& format, int reported) {
  throw zuExFull(format, reported);
}

void ZuExThrow(const zuFormatPos& format) {
  ZuExThrow(format, 0);
}

// The base layer's failures, thrown as the rest of the library throws them.
void zu::internal::raiseOutOfMemory() {
  throw zuExMemory();
}
void zu::internal::raiseMessage(unsigned short id) {
  ZuExThrow(id);
}
