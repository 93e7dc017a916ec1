// zuException: the tree of exceptions the library throws, and ZuExThrow.
//
// Every failure crosses the library's interface as one of these objects. An
// exception is a list of error items (zuExErrItem, in zuExErrItem.h): a
// 16-bit message id and its text, fetched from the message catalogue only
// when somebody asks for it. Callers walk the list by index or join it.
//
//   try {
//     ZuExThrow(16479);                     // invalid argument
//   } catch (zuExFull& error) {
//     if (error.HasResId(16479)) { ... }
//     zuString* text = error.String();      // each item's text and a line feed
//     delete text;
//   }
//
// Out of memory is always zuExMemory, never zuExFull: it allocates nothing.
// The other members of the tree live in zuExAssert.h, zuExResourceFailure.h
// and zuExVersionMismatch.h. An exception object belongs to the thread that
// caught it.
#pragma once

#include <new>
#include <vector>

#include "zu/core/zuExport.h"

class zuExErrItem;
class zuFormat;
class zuFormatPos;
class zuString;

// The abstract root. Holds the reported flag and offers the item list; an
// exception of this class itself has no items.
class ZU_EXPORT zuException {
 public:
  virtual ~zuException() = 0;

  // Loads the texts of all items from the calling thread's catalogue.
  virtual void Resolve();
  // Number of items (0 here).
  virtual unsigned int Count() const;
  // The item at `index`; an index past the items gives a shared empty item.
  virtual const zuExErrItem& operator[](unsigned int index) const;

  // Non-zero once somebody has shown the error to the user, so that outer
  // handlers do not show it again.
  int WasReported() const { return reported_; }
  void WasReported(int reported) { reported_ = reported; }

 protected:
  explicit zuException(int reported = 0) : reported_(reported) {}
  zuException(const zuException&) = default;
  zuException& operator=(const zuException&) = default;

  // The item returned for an index that has none: id 0, empty text.
  static const zuExErrItem& EmptyItem();

 private:
  int reported_;
};

// The general exception: a growable list of error items. Everything thrown
// through ZuExThrow is a zuExFull.
class ZU_EXPORT zuExFull : public zuException {
 public:
  zuExFull();
  // One unresolved item: its text comes from the catalogue on Resolve().
  zuExFull(unsigned short id, int reported);
  // One resolved item with the given text.
  zuExFull(unsigned short id, const zuString& text, int reported);
  // One item holding the formatter's result and a copy of the formatter, so
  // that callers can read its parameters back; the id is the formatter's.
  zuExFull(const zuFormat& format, int reported);
  zuExFull(unsigned short id, const zuFormat& format, int reported);
  zuExFull(const zuFormatPos& format, int reported);
  zuExFull(unsigned short id, const zuFormatPos& format, int reported);
  // No items; takes over `other`'s reported flag (`unused` is ignored).
  zuExFull(const zuException& other, int unused);
  zuExFull(const zuExFull& other);
  zuExFull& operator=(const zuExFull& other);
  ~zuExFull() override;

  void Resolve() override;
  unsigned int Count() const override;
  const zuExErrItem& operator[](unsigned int index) const override;

  // 1 when any item carries `id`, else 0.
  int HasResId(unsigned short id) const;
  // The first item's id; 0 when there are no items.
  unsigned short FirstResId() const;
  // The id of item `index`; 0 when there is no such item.
  unsigned short GetResId(unsigned int index) const;

  // Adds `other`'s items. With `atEnd` set they are appended in their order;
  // with `atEnd` 0 each is inserted in turn at the front, so they end up
  // before the existing items in reverse order (other's last item first).
  void Insert(const zuExFull& other, int atEnd);

  // Resolves every item and returns a new string (the caller deletes it)
  // holding each item's text followed by a line feed; null when empty.
  zuString* String();

 private:
  std::vector<zuExErrItem> items_;
};

// Out of memory. Also a std::bad_alloc whose what() is "bad allocation", so
// code that knows nothing of this library still catches it. Its single item
// (message id 16583) is kept per thread and created without allocating.
class ZU_EXPORT zuExMemory : public zuException, public std::bad_alloc {
 public:
  zuExMemory() = default;
  zuExMemory(const zuExMemory&) = default;
  zuExMemory& operator=(const zuExMemory&) = default;
  ~zuExMemory() override;

  const char* what() const noexcept override;
  // Always 1.
  unsigned int Count() const override;
  // The out-of-memory item for any index, resolved on every access.
  const zuExErrItem& operator[](unsigned int index) const override;
};

// Throwing functions: each builds a zuExFull and throws it.
// The item of message `id`, unresolved.
[[noreturn]] ZU_EXPORT void ZuExThrow(unsigned short id, int reported);
[[noreturn]] ZU_EXPORT void ZuExThrow(unsigned short id);
// The text run through a zuFormat without arguments (id 0): "%%" becomes "%"
// and the text is cut at its first conversion.
[[noreturn]] ZU_EXPORT void ZuExThrow(const zuString& text, int reported);
[[noreturn]] ZU_EXPORT void ZuExThrow(const zuString& text);
// The formatter's result, id and parameters.
[[noreturn]] ZU_EXPORT void ZuExThrow(const zuFormat& format, int reported);
[[noreturn]] ZU_EXPORT void ZuExThrow(const zuFormat& format);
[[noreturn]] ZU_EXPORT void ZuExThrow(const zuFormatPos& format, int reported);
[[noreturn]] ZU_EXPORT void ZuExThrow(const zuFormatPos& format);
