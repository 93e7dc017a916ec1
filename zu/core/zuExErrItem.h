// zuExErrItem: one entry of an exception: a message id and its text.
//
// An item made from an id alone is unresolved: its text is looked up in the
// calling thread's message catalogue the first time Resolve() is called, and
// looked up again next time if that failed. An item built from a formatter
// keeps a copy of it, so that the formatted arguments can be read back.
//
//   zuExErrItem item(16479);
//   item.Resolve();                       // text from the catalogue, if any
//   zuString reason = item.Text();
//
// An item belongs to one thread, like the strings it holds.
#pragma once

#include <cstdint>
#include <memory>

#include "zu/core/zuExport.h"
#include "zu/core/zuString.h"

class zuFormat;
class zuFormatPos;

class ZU_EXPORT zuExErrItem {
 public:
  // Which formatter, if any, an item keeps.
  enum tFormatType { eNoFormat = 0, eFormat = 1, eFormatPos = 2 };

  // Id 0, empty text, unresolved, no formatter.
  zuExErrItem();
  // Unresolved: the text will come from the catalogue.
  explicit zuExErrItem(unsigned short id);
  // Resolved with the given text.
  zuExErrItem(unsigned short id, const zuString& text);
  // Copies deep-copy the kept formatter.
  zuExErrItem(const zuExErrItem& other);
  zuExErrItem& operator=(const zuExErrItem& other);
  zuExErrItem(zuExErrItem&& other) noexcept;
  zuExErrItem& operator=(zuExErrItem&& other) noexcept;
  ~zuExErrItem();

  unsigned short ResId() const { return id_; }
  void ResId(unsigned short id) { id_ = id; }
  const zuString& Text() const { return text_; }
  // Sets the text; the item counts as resolved from then on.
  void Text(const zuString& text);
  int IsResolved() const { return flags_ & kResolvedBit; }

  // Loads the text of the id when it is not resolved yet. Returns the
  // resolved bit: 0 when the catalogue has no text (retried next time).
  int Resolve();

  // Keeps a copy of `formatter`, a zuFormat (type eFormat) or a zuFormatPos
  // (type eFormatPos); any other type only records the type.
  void FormatObject(const void* formatter, tFormatType type);
  tFormatType FormatType() const;

  // Number of parameters of the kept formatter, 0 without one.
  unsigned int getParmCount() const;
  // The text of parameter `index`; zuString::EmptyString() without a
  // formatter or for an index at or past getParmCount().
  const zuString& getParm(unsigned int index) const;

  // Equal when the ids and the resolved bits are equal and the texts compare
  // equal ignoring ASCII case.
  bool operator==(const zuExErrItem& other) const;
  bool operator!=(const zuExErrItem& other) const { return !(*this == other); }

 private:
  static constexpr uint8_t kResolvedBit = 0x01;
  static constexpr uint8_t kFormatTypeShift = 1;
  static constexpr uint8_t kFormatTypeMask = 0x06;

  void SetResolved(int resolved);
  void SetFormatType(tFormatType type);
  void CopyFormatterFrom(const zuExErrItem& other);

  uint16_t id_;
  zuString text_;
  uint8_t flags_;
  std::unique_ptr<zuFormat> format_;
  std::unique_ptr<zuFormatPos> formatPos_;
};
