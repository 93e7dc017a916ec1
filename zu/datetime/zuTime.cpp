#include "zu/datetime/zuTime.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <type_traits>

#include "zu/core/internal/zuMessageLookup.h"
#include "zu/core/internal/zuThreadMemo.h"
#include "zu/core/zuException.h"
#include "zu/core/zuMessageIds.h"
#include "zu/datetime/internal/zuClock.h"
#include "zu/datetime/internal/zuDateFormats.h"

using zu::internal::kTimeForms;

static_assert(std::is_trivially_copyable_v<zuTime>, "a time copies as one word");

namespace {

// Units from the smallest up: milliseconds, seconds, minutes, hours.
constexpr int64_t kBases[4] = {1000, 60, 60, 24};
constexpr int64_t kMaxNumber = 2147483647;
// Day-half markers up to this many bytes are written with the numbers.
constexpr unsigned int kShortMarker = 48;

// Bytes of the text as Parse sees them.
enum CharClass : uint8_t { kOther, kDelimiter, kDigit };

constexpr std::array<uint8_t, 256> makeCharClasses() {
  std::array<uint8_t, 256> classes{};
  for (const char delimiter : {' ', ',', '.', '/', '\\', '-', '_', ';', ':', '\''}) {
    classes[static_cast<unsigned char>(delimiter)] = kDelimiter;
  }
  for (int digit = '0'; digit <= '9'; ++digit) classes[digit] = kDigit;
  return classes;
}

constexpr std::array<uint8_t, 256> kCharClasses = makeCharClasses();

uint8_t classOf(const char* at) {
  return kCharClasses[static_cast<unsigned char>(*at)];
}

// Writes `value` (0..999) with `width` digits, or with as many as it needs
// when `width` is 0.
char* writeDigits(char* out, int value, int width) {
  if (width == 3 || value >= 100) *out++ = static_cast<char>('0' + value / 100);
  if (width >= 2 || value >= 10) *out++ = static_cast<char>('0' + value / 10 % 10);
  *out++ = static_cast<char>('0' + value % 10);
  return out;
}

// The texts of the day-half markers, kept per thread while the message
// loader's state stays as it was when they were looked up.
struct MarkerMemo {
  uint64_t generation = 0;  // 0: nothing kept
  zuString texts[2];        // morning, afternoon
  int found[2] = {0, 0};
};

// Sets `text` to the morning or afternoon marker as the message loader
// gives it now and returns non-zero, or sets it empty and returns 0 when no
// catalogue has it.
int dayHalfMarker(bool afternoon, zuString& text) {
  const uint64_t generation = zu::internal::messageGeneration();
  if (generation == 0) {
    // An override loader may answer differently at every call.
    return zu::internal::loadMessage(
        afternoon ? zuMessageIds::kAfternoonMarker : zuMessageIds::kMorningMarker, text);
  }
  MarkerMemo& memo = zu::internal::zuThreadMemo<MarkerMemo>::get();
  if (memo.generation != generation) {
    memo.generation = 0;
    memo.found[0] = zu::internal::loadMessage(zuMessageIds::kMorningMarker, memo.texts[0]);
    memo.found[1] = zu::internal::loadMessage(zuMessageIds::kAfternoonMarker, memo.texts[1]);
    memo.generation = generation;
  }
  text = memo.texts[afternoon ? 1 : 0];
  return memo.found[afternoon ? 1 : 0];
}

// Two ASCII digits at `at` as a number, or -1.
int twoDigits(const char* at) {
  const unsigned int tens = static_cast<unsigned char>(at[0]) - unsigned{'0'};
  const unsigned int units = static_cast<unsigned char>(at[1]) - unsigned{'0'};
  return tens < 10 && units < 10 ? static_cast<int>(tens * 10 + units) : -1;
}

// Reads the texts of forms 3, 2 and 1 as Format writes them ("14:05",
// "14:05:09", "14:05:09:007", any delimiter for the colons): two digits a
// field, three for the milliseconds, one delimiter between. They read as
// the general rules read them; false for any other text.
bool readWrittenForm(const char* text, std::size_t length, int64_t fields[4]) {
  if (length != 5 && length != 8 && length != 12) return false;
  const int count = length == 5 ? 2 : length == 8 ? 3 : 4;
  for (int field = 0; field < count; ++field) {
    const char* const at = text + 3 * field;
    if (field > 0 && classOf(at - 1) != kDelimiter) return false;
    int value = twoDigits(at);
    if (field == 3) {
      const unsigned int last = static_cast<unsigned char>(at[2]) - unsigned{'0'};
      value = value >= 0 && last < 10 ? value * 10 + static_cast<int>(last) : -1;
    }
    if (value < 0) return false;
    fields[field] = value;
  }
  return true;
}

bool sameIgnoringCase(const char* left, const char* right, std::size_t length) {
  const auto fold = [](char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
  };
  for (std::size_t i = 0; i < length; ++i) {
    if (fold(left[i]) != fold(right[i])) return false;
  }
  return true;
}

// Whether the bytes [start, end) hold the afternoon marker, ignoring ASCII
// case. Out of line: the marker is a string object, which the digit loop
// of Parse is better without.
[[gnu::noinline]] bool holdsAfternoonMarker(const char* start, const char* end) {
  zuString marker;
  if (!dayHalfMarker(true, marker)) return false;
  const char* const text = marker;
  const std::size_t length = marker.Length();
  for (const char* at = start; length <= static_cast<std::size_t>(end - at); ++at) {
    if (sameIgnoringCase(at, text, length)) return true;
  }
  return false;
}

}  // namespace

zuTime::zuTime() {
  CurrentTime(1);
}

zuTime::zuTime(long hour, long minute, long second, long millisecond) {
  Set(hour, minute, second, millisecond);
}

zuTime::zuTime(int64_t time, int local) {
  Set(time, local);
}

zuTime::zuTime(const zuString& text) {
  Parse(text);
}

void zuTime::Set(long hour, long minute, long second, long millisecond) {
  if (hour < 0 || hour > 23) ZuExThrow(zuMessageIds::kInvalidHour);
  if (minute < 0 || minute > 59) ZuExThrow(zuMessageIds::kInvalidMinute);
  if (second < 0 || second > 59) ZuExThrow(zuMessageIds::kInvalidSecond);
  if (millisecond < 0 || millisecond > 999) ZuExThrow(zuMessageIds::kInvalidMillisecond);
  Store(hour, minute, second, millisecond);
}

void zuTime::Store(long hour, long minute, long second, long millisecond) {
  time_ = static_cast<int32_t>(((hour * 100 + minute) * 100 + second) * 1000 + millisecond);
}

void zuTime::Set(int64_t time, int local) {
  zu::internal::CalendarFields fields;
  if (!zu::internal::breakDown(time, local != 0, fields)) ZuExThrow(zuMessageIds::kInvalidHour);
  Set(fields.hour, fields.minute, fields.second, 0);
}

void zuTime::CurrentTime(int local) {
  const zu::internal::CalendarFields now = zu::internal::readClock(local != 0);
  Set(now.hour, now.minute, now.second, now.millisecond);
}

// --- Arithmetic ---------------------------------------------------------------

void zuTime::CheckAmounts(long hours, long minutes, long seconds, long millis) {
  if (hours < 0 || hours > kMaxHours) ZuExThrow(zuMessageIds::kInvalidHour);
  if (minutes < 0 || minutes > kMaxMinutes) ZuExThrow(zuMessageIds::kInvalidMinute);
  if (seconds < 0 || seconds > kMaxSeconds) ZuExThrow(zuMessageIds::kInvalidSecond);
  if (millis < 0 || millis > kMaxMillis) ZuExThrow(zuMessageIds::kInvalidMillisecond);
}

long zuTime::Add(long hours, long minutes, long seconds, long millis) {
  CheckAmounts(hours, minutes, seconds, millis);
  int64_t fields[4] = {Millisec(), Second(), Minute(), Hour()};
  const int64_t amounts[4] = {millis, seconds, minutes, hours};
  int64_t carry = 0;
  for (int unit = 0; unit < 4; ++unit) {
    const int64_t total = carry + fields[unit] + amounts[unit];
    fields[unit] = total % kBases[unit];
    carry = total / kBases[unit];
  }
  Store(fields[3], fields[2], fields[1], fields[0]);
  return static_cast<long>(carry);
}

long zuTime::Subtract(long hours, long minutes, long seconds, long millis) {
  CheckAmounts(hours, minutes, seconds, millis);
  int64_t fields[4] = {Millisec(), Second(), Minute(), Hour()};
  const int64_t amounts[4] = {millis, seconds, minutes, hours};
  int64_t borrow = 0;
  for (int unit = 0; unit < 4; ++unit) {
    const int64_t taken = borrow + amounts[unit];
    const int64_t whole = taken / kBases[unit];
    const int64_t rest = taken % kBases[unit];
    if (rest <= fields[unit]) {
      fields[unit] -= rest;
      borrow = whole;
    } else {
      fields[unit] += kBases[unit] - rest;
      borrow = whole + 1;
    }
  }
  Store(fields[3], fields[2], fields[1], fields[0]);
  return static_cast<long>(borrow);
}

int zuTime::Difference(const zuTime& other, long& hours, long& minutes, long& seconds,
                       long& millis) const {
  const int order = Compare(other);
  zuTime later = order >= 0 ? *this : other;
  const zuTime& earlier = order >= 0 ? other : *this;
  later.Subtract(earlier.Hour(), earlier.Minute(), earlier.Second(), earlier.Millisec());
  hours = later.Hour();
  minutes = later.Minute();
  seconds = later.Second();
  millis = later.Millisec();
  return order;
}

// --- Text -----------------------------------------------------------------------

namespace {

// Writes the numbers of `form` for the packed `time`: the hour (on the
// 12-hour dial where the form has a marker), then minutes, seconds and
// milliseconds as the form shows them. Returns the end.
char* writeForm(char* text, const zu::internal::TimeFormRow& form, int32_t time) {
  const int hour = time / 10000000;
  const int fields[4] = {form.twelveHour && hour >= 13 ? hour - 12 : hour, time / 100000 % 100,
                         time / 1000 % 100, time % 1000};
  char* end = writeDigits(text, fields[0], form.padHour ? 2 : 0);
  for (int field = 1; field < form.fields; ++field) {
    if (form.separator != '\0') *end++ = form.separator;
    end = writeDigits(end, fields[field], field == 3 ? 3 : 2);
  }
  return end;
}

}  // namespace

unsigned int zuTime::FormatDigits(zuTimeFmt fmt, char* out) const {
  if (fmt < 0 || fmt >= zu::internal::kTimeFormCount || kTimeForms[fmt].twelveHour) {
    return kNotDigits;
  }
  return static_cast<unsigned int>(writeForm(out, kTimeForms[fmt], time_) - out);
}

zuString zuTime::Format(zuTimeFmt fmt) const {
  if (fmt < 0 || fmt >= zu::internal::kTimeFormCount) {
    zuString digits;
    digits.Number(static_cast<long>(time_));
    return digits;
  }
  const zu::internal::TimeFormRow& form = kTimeForms[fmt];
  // The numbers and, when it is short, the marker.
  char text[kDigitsBytes + kShortMarker];
  char* end = writeForm(text, form, time_);
  if (!form.twelveHour) return zuString::FromBytes(text, static_cast<unsigned int>(end - text));
  *end++ = ' ';
  zuString dayHalf;
  dayHalfMarker(time_ / 10000000 > 12, dayHalf);
  const unsigned int length = static_cast<unsigned int>(end - text);
  if (dayHalf.Length() <= sizeof text - length) {
    std::memcpy(end, static_cast<const char*>(dayHalf), dayHalf.Length());
    return zuString::FromBytes(text, length + dayHalf.Length());
  }
  zuString out;
  char* chars = out.ReAlloc(length + dayHalf.Length(), 0);
  std::memcpy(chars, text, length);
  std::memcpy(chars + length, static_cast<const char*>(dayHalf), dayHalf.Length());
  out.SetLength(length + dayHalf.Length());
  return out;
}

int zuTime::Parse(const zuString& text) {
  int64_t fields[4] = {0, 0, 0, 0};  // hour, minute, second, millisecond
  const char* const begin = text;
  const char* const end = begin + text.Length();
  if (readWrittenForm(begin, text.Length(), fields)) {
    Set(static_cast<long>(fields[0]), static_cast<long>(fields[1]), static_cast<long>(fields[2]),
        static_cast<long>(fields[3]));
    return 1;
  }
  int filled = 0;
  bool afternoon = false;
  const char* at = begin;
  // The common shapes first ("14:05:09", "2:30 PM"): tokens of one to three
  // digits, each followed by one delimiter or the end. Where the text takes
  // another shape, the general loop below goes on from the token at hand.
  while (at < end && filled < 4) {
    const char* digit = at;
    int number = 0;
    while (digit < end && digit - at < 3 && classOf(digit) == kDigit) {
      number = number * 10 + (*digit++ - '0');
    }
    if (digit == at || (digit < end && classOf(digit) != kDelimiter)) break;
    fields[filled++] = number;
    at = digit < end ? digit + 1 : digit;
  }
  while (at < end) {
    if (classOf(at) == kDelimiter) {
      ++at;
      continue;
    }
    // A token: its leading digits, then whatever else it holds.
    int64_t number = 0;
    const char* const digits = at;
    for (; at < end && classOf(at) == kDigit; ++at) {
      if (number <= kMaxNumber) number = number * 10 + (*at - '0');
    }
    if (at > digits && filled < 4) {
      if (number > kMaxNumber) return 0;  // past 32 bits
      fields[filled++] = number;
    }
    if (at == end || classOf(at) == kDelimiter) continue;
    // The first token that is not all digits is the last one read.
    const char* tokenEnd = at;
    while (tokenEnd < end && classOf(tokenEnd) != kDelimiter) ++tokenEnd;
    afternoon = holdsAfternoonMarker(at, tokenEnd);
    break;
  }
  if (afternoon && fields[0] < 12) fields[0] += 12;
  Set(static_cast<long>(fields[0]), static_cast<long>(fields[1]), static_cast<long>(fields[2]),
      static_cast<long>(fields[3]));
  return 1;
}
