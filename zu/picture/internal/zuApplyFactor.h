// applyFactor: the arithmetic behind ZuApplyFactor, inline so that callers
// with constant factors (the unit conversions) divide by constants.
//
//   int64_t centimetres = applyFactor(72000, 635, 72);   // 635000
//
// value * multiplier / divisor, rounded half away from zero by the sign of
// `value` alone (0 rounds as a negative), by these steps (which never form
// value * multiplier; with two positive factors one division of that
// product gives the same result and is taken instead):
//   1. quotient = value / divisor, remainder = value % divisor (truncated);
//   2. tenths = remainder * multiplier * 10 / divisor (truncated);
//   3. tenths += 5 when value > 0, else -5; tenths /= 10 (toward zero);
//   4. result = quotient * multiplier + tenths.
// The multiplier and divisor must be 32-bit values, the divisor non-zero,
// and |value * multiplier| below 2^62; the result is exact in 64 bits
// (callers cut or saturate it).
#pragma once

#include <cstdint>

namespace zu::internal {

constexpr int64_t applyFactor(int64_t value, int64_t multiplier, int64_t divisor) {
  if (multiplier > 0 && divisor > 0) {
    // With positive factors the steps below round the exact quotient half
    // away from zero, which one division does (by a constant, for constant
    // factors). The sign is applied without a branch: it is as likely one
    // way as the other.
    const int64_t sign = value < 0 ? -1 : 0;
    const auto magnitude = static_cast<uint64_t>((value ^ sign) - sign);
    const uint64_t twice = 2 * static_cast<uint64_t>(divisor);
    const auto rounded = static_cast<int64_t>(
        (2 * magnitude * static_cast<uint64_t>(multiplier) + static_cast<uint64_t>(divisor)) /
        twice);
    return (rounded ^ sign) - sign;
  }
  const int64_t quotient = value / divisor;
  const int64_t remainder = value % divisor;
  // |remainder| < |divisor|, so ten times the product fits 64 bits whenever
  // ten times |multiplier * divisor| does; otherwise it is formed in 128 bits.
  const uint64_t bound = static_cast<uint64_t>(multiplier < 0 ? -multiplier : multiplier) *
                         static_cast<uint64_t>(divisor < 0 ? -divisor : divisor);
  int64_t tenths =
      bound <= static_cast<uint64_t>(INT64_MAX / 10)
          ? remainder * multiplier * 10 / divisor
          : static_cast<int64_t>(static_cast<__int128>(remainder) * multiplier * 10 / divisor);
  tenths += value > 0 ? 5 : -5;
  tenths /= 10;
  return quotient * multiplier + tenths;
}

}  // namespace zu::internal
