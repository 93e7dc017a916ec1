#include "zu/datetime/zuTime.h"

#include <array>
#include <cstring>
#include <type_traits>

#include "zu/core/internal/zuMessageLookup.h"
#include "zu/core/zuException.h"
#include "zu/core/zuMessageIds.h"
#include "zu/datetime/internal/zuClock.h"
#include "zu/datetime/internal/zuDateFormats.h"

using zu::internal::kTimeForms;

static_assert(std::is_trivially_copyable_v<zuTime>, "a time copies as one word");

namespace {

// Units from the smallest up: milliseconds, seconds, minutes, hours.
constexpr int64_t kBases[4] = {1000, 60, 60, 24};
constexpr int kMaxTimeText = 16;
constexpr int64_t kMaxNumber = 2147483647;

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

// Whether the bytes [start, end) of `text` hold the afternoon marker,
// ignoring ASCII case. Out of line: the marker is a string object, which
// the digit loop of Parse is better without.
[[gnu::noinline]] bool holdsAfternoonMarker(const zuString& text, unsigned int start,
                                            unsigned int end) {
  zuString marker;
  unsigned int foundAt = 0;
  return zu::internal::loadMessage(zuMessageIds::kAfternoonMarker, marker) &&
         text.FindNoCase(marker, foundAt, start) && foundAt + marker.Length() <= end;
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

zuString zuTime::Format(zuTimeFmt fmt) const {
  if (fmt < 0 || fmt >= zu::internal::kTimeFormCount) {
    zuString digits;
    digits.Number(static_cast<long>(time_));
    return digits;
  }
  const zu::internal::TimeFormRow& form = kTimeForms[fmt];
  const int hour = time_ / 10000000;
  const int fields[4] = {form.twelveHour && hour >= 13 ? hour - 12 : hour, time_ / 100000 % 100,
                         time_ / 1000 % 100, time_ % 1000};
  char text[kMaxTimeText];
  char* end = writeDigits(text, fields[0], form.padHour ? 2 : 0);
  for (int field = 1; field < form.fields; ++field) {
    if (form.separator != '\0') *end++ = form.separator;
    end = writeDigits(end, fields[field], field == 3 ? 3 : 2);
  }
  if (!form.twelveHour) return zuString::FromBytes(text, static_cast<unsigned int>(end - text));
  *end++ = ' ';
  zuString dayHalf;
  zu::internal::loadMessage(
      hour <= 12 ? zuMessageIds::kMorningMarker : zuMessageIds::kAfternoonMarker, dayHalf);
  const unsigned int length = static_cast<unsigned int>(end - text);
  zuString out;
  char* chars = out.ReAlloc(length + dayHalf.Length(), 0);
  std::memcpy(chars, text, length);
  std::memcpy(chars + length, static_cast<const char*>(dayHalf), dayHalf.Length());
  out.SetLength(length + dayHalf.Length());
  return out;
}

int zuTime::Parse(const zuString& text) {
  int64_t fields[4] = {0, 0, 0, 0};  // hour, minute, second, millisecond
  int filled = 0;
  bool afternoon = false;
  const char* const begin = text;
  const char* const end = begin + text.Length();
  for (const char* at = begin; at < end;) {
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
    afternoon = holdsAfternoonMarker(text, static_cast<unsigned int>(at - begin),
                                     static_cast<unsigned int>(tokenEnd - begin));
    break;
  }
  if (afternoon && fields[0] < 12) fields[0] += 12;
  Set(static_cast<long>(fields[0]), static_cast<long>(fields[1]), static_cast<long>(fields[2]),
      static_cast<long>(fields[3]));
  return 1;
}
