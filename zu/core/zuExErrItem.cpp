#include "zu/core/zuExErrItem.h"

#include "zu/core/internal/zuMessageLookup.h"
#include "zu/core/zuFormat.h"
#include "zu/core/zuFormatPos.h"

zuExErrItem::zuExErrItem() : id_(0), flags_(0) {}

zuExErrItem::zuExErrItem(unsigned short id) : id_(id), flags_(0) {}

zuExErrItem::zuExErrItem(unsigned short id, const zuString& text)
    : id_(id), text_(text), flags_(kResolvedBit) {}

zuExErrItem::zuExErrItem(const zuExErrItem& other)
    : id_(other.id_), text_(other.text_), flags_(other.flags_) {
  CopyFormatterFrom(other);
}

zuExErrItem& zuExErrItem::operator=(const zuExErrItem& other) {
  if (this == &other) return *this;
  id_ = other.id_;
  text_ = other.text_;
  flags_ = other.flags_;
  CopyFormatterFrom(other);
  return *this;
}

// A move copies the text, which only shares its block, and moves the kept
// formatter instead of copying it.
zuExErrItem::zuExErrItem(zuExErrItem&& other) noexcept = default;

zuExErrItem& zuExErrItem::operator=(zuExErrItem&& other) noexcept = default;

zuExErrItem::~zuExErrItem() = default;

void zuExErrItem::Text(const zuString& text) {
  text_ = text;
  SetResolved(1);
}

int zuExErrItem::Resolve() {
  if (!IsResolved()) SetResolved(zu::internal::loadMessage(id_, text_));
  return IsResolved();
}

void zuExErrItem::FormatObject(const void* formatter, tFormatType type) {
  format_.reset();
  formatPos_.reset();
  SetFormatType(type);
  if (formatter == nullptr) return;
  if (type == eFormat) {
    format_ = std::make_unique<zuFormat>(*static_cast<const zuFormat*>(formatter));
  } else if (type == eFormatPos) {
    formatPos_ = std::make_unique<zuFormatPos>(*static_cast<const zuFormatPos*>(formatter));
  }
}

zuExErrItem::tFormatType zuExErrItem::FormatType() const {
  return static_cast<tFormatType>((flags_ & kFormatTypeMask) >> kFormatTypeShift);
}

unsigned int zuExErrItem::getParmCount() const {
  if (format_) return format_->GetParmCount();
  if (formatPos_) return formatPos_->GetParmCount();
  return 0;
}

const zuString& zuExErrItem::getParm(unsigned int index) const {
  if (format_) return format_->GetParm(index);
  if (formatPos_) return formatPos_->GetParm(index);
  return zuString::EmptyString();
}

bool zuExErrItem::operator==(const zuExErrItem& other) const {
  return id_ == other.id_ && IsResolved() == other.IsResolved() &&
         text_.CompareNoCase(other.text_) == 0;
}

void zuExErrItem::SetResolved(int resolved) {
  flags_ = static_cast<uint8_t>(resolved ? flags_ | kResolvedBit : flags_ & ~kResolvedBit);
}

void zuExErrItem::SetFormatType(tFormatType type) {
  // Only the two bits of the type are kept; a wider value is recorded cut.
  const auto bits =
      static_cast<uint8_t>((static_cast<unsigned>(type) << kFormatTypeShift) & kFormatTypeMask);
  flags_ = static_cast<uint8_t>((flags_ & ~kFormatTypeMask) | bits);
}

void zuExErrItem::CopyFormatterFrom(const zuExErrItem& other) {
  format_ = other.format_ ? std::make_unique<zuFormat>(*other.format_) : nullptr;
  formatPos_ = other.formatPos_ ? std::make_unique<zuFormatPos>(*other.formatPos_) : nullptr;
}
