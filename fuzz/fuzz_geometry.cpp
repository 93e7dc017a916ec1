// Runs the bytes as a script of operations on spans, points, rectangles
// and angles, with any unit codes, NaN and infinite factors, -2147483648
// and divisors of 0 and -1.
//
// Input: operations one after another, each an opcode byte and the bytes
// it reads (missing bytes read as 0). Only 16479 (invalid argument), 17107
// (unknown unit) and 17174 (angle out of range) may be thrown; angles stay
// within 0..360000; after every rectangle operation that returns, edges of
// one base stay ordered (left <= right, top <= bottom).
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "zu/core/zuException.h"
#include "zu/core/zuMessageIds.h"
#include "zu/measure/zuAngle.h"
#include "zu/measure/zuCoordPair.h"
#include "zu/measure/zuMargins.h"
#include "zu/measure/zuRect.h"
#include "zu/measure/zuUnitSpan.h"

namespace {

class Script {
 public:
  Script(const uint8_t* data, size_t size) : data_(data), end_(data + size) {}

  bool done() const { return data_ == end_; }

  uint8_t byte() { return data_ != end_ ? *data_++ : 0; }

  // The values the arithmetic finds hardest, or any 32 bits.
  int32_t integer() {
    switch (byte() % 6) {
      case 0:
        return 0;
      case 1:
        return -1;
      case 2:
        return INT32_MIN;
      case 3:
        return INT32_MAX;
      case 4:
        return static_cast<int8_t>(byte());
      default: {
        uint32_t bits = 0;
        for (int i = 0; i < 4; ++i) bits = bits << 8 | byte();
        return static_cast<int32_t>(bits);
      }
    }
  }

  // Wider than 32 bits now and then, to reach the range checks of angles
  // and the cutting of long arguments.
  long wide() { return byte() % 8 == 0 ? static_cast<long>(integer()) << 20 : integer(); }

  double real() {
    switch (byte() % 5) {
      case 0:
        return std::nan("");
      case 1:
        return byte() % 2 ? INFINITY : -INFINITY;
      case 2:
        return integer() / 1000.0;
      case 3:
        return static_cast<int8_t>(byte()) / 8.0;
      default: {
        uint64_t bits = 0;
        for (int i = 0; i < 8; ++i) bits = bits << 8 | byte();
        double value;
        std::memcpy(&value, &bits, sizeof value);
        return value;
      }
    }
  }

  zuUnitSpan::UnitCode unit() {
    static const uint8_t kCodes[] = {0, 1, 3, 17, 19, 35, 51, 255};
    const uint8_t pick = byte();
    return static_cast<zuUnitSpan::UnitCode>(pick < 200 ? kCodes[pick % 8] : pick);
  }

  zuUnitSpan span() { return zuUnitSpan(unit(), integer()); }

  zuCoordPair point() { return zuCoordPair(span(), span()); }

 private:
  const uint8_t* data_;
  const uint8_t* end_;
};

// Edges of one base must be ordered; spans whose bases differ are not
// compared (conversions may round either way).
void checkOrdered(const zuUnitSpan& low, const zuUnitSpan& high) {
  if (((low.Units() ^ high.Units()) & 15u) == 0 && low.Value() > high.Value()) std::abort();
}

void checkRect(const zuRect& rect) {
  checkOrdered(rect.Left(), rect.Right());
  checkOrdered(rect.Top(), rect.Bottom());
}

struct State {
  zuUnitSpan spans[2];
  zuCoordPair points[2];
  zuRect rects[2];
  zuAngle angle;
  zuMargins margins;
};

void spanStep(Script& script, State& state) {
  zuUnitSpan& span = state.spans[script.byte() & 1];
  const zuUnitSpan& other = state.spans[script.byte() & 1];
  zuString text;
  switch (script.byte() % 18) {
    case 0:
      span = script.span();
      break;
    case 1:
      span += other;
      break;
    case 2:
      span -= other;
      break;
    case 3:
      span = -span.Abs();
      break;
    case 4:
      span *= script.wide();
      break;
    case 5:
      span *= script.real();
      break;
    case 6:
      span /= script.wide();
      break;
    case 7:
      span = span.ApplyFactor(script.wide(), script.wide());
      break;
    case 8:
      span.Grid(other);
      break;
    case 9:
      span.Round(other);
      break;
    case 10:
      span.ChangeUnits(script.unit());
      break;
    case 11:
      (void)(span / other);
      break;
    case 12:
      (void)(span < other || span == other);
      break;
    case 13:
      (void)zuUnitSpan::UnitsPerInch(span.Units());
      break;
    case 14:
      span.Text(text, script.byte() % 10, 0, script.byte() % 10, script.byte() & 1);
      break;
    case 15:
      span = zuUnitSpan(script.real(), script.unit());
      break;
    case 16:
      span = zuUnitSpan(script.unit(), script.unit(), script.wide());
      break;
    default:
      (void)zuUnitSpan::ValueToUnit(script.wide(), script.unit());
      break;
  }
}

void angleStep(Script& script, State& state) {
  zuAngle& angle = state.angle;
  switch (script.byte() % 7) {
    case 0:
      angle = zuAngle(static_cast<int>(script.integer()));
      break;
    case 1:
      angle = zuAngle(script.real());
      break;
    case 2:
      angle.Degrees(script.wide());
      break;
    case 3:
      angle.ResValue(script.wide());
      break;
    case 4:
      angle.Angle(script.real());
      break;
    case 5:
      angle += zuAngle(static_cast<int>(script.byte() % 361));
      break;
    default:
      angle -= zuAngle(static_cast<int>(script.byte() % 361));
      break;
  }
}

void pointStep(Script& script, State& state) {
  zuCoordPair& point = state.points[script.byte() & 1];
  const zuCoordPair& other = state.points[script.byte() & 1];
  switch (script.byte() % 8) {
    case 0:
      point = script.point();
      break;
    case 1:
      point += other;
      break;
    case 2:
      point -= other;
      break;
    case 3:
      point.Scale(script.real(), script.real());
      break;
    case 4:
      point.Grid(other);
      break;
    case 5:
      point.Round(other);
      break;
    case 6:
      point = point.RotatePoint(other, state.angle);
      break;
    default:
      (void)(point < other || point > other || point == other);
      break;
  }
}

void rectStep(Script& script, State& state) {
  zuRect& rect = state.rects[script.byte() & 1];
  const zuRect& other = state.rects[script.byte() & 1];
  const zuCoordPair& point = state.points[script.byte() & 1];
  switch (script.byte() % 24) {
    case 0:
      rect = zuRect(script.point(), script.point());
      break;
    case 1:
      rect.Rect(script.span(), script.span(), script.span(), script.span());
      break;
    case 2:
      rect.LeftRight(script.span(), script.span());
      break;
    case 3:
      rect.TopBottom(script.span(), script.span());
      break;
    case 4:
      rect.LeftWidth(script.span(), script.span());
      break;
    case 5:
      rect.RightWidth(script.span(), script.span());
      break;
    case 6:
      rect.TopHeight(script.span(), script.span());
      break;
    case 7:
      rect.BottomHeight(script.span(), script.span());
      break;
    case 8:
      rect.Width(script.span(), script.byte() & 1);
      break;
    case 9:
      rect.Height(script.span(), script.byte() & 1);
      break;
    case 10:
      rect.Left(script.span());
      break;
    case 11:
      rect.Bottom(script.span());
      break;
    case 12:
      rect.TopLeft(point);
      break;
    case 13:
      rect.BottomRight(point);
      break;
    case 14:
      rect += point;
      break;
    case 15:
      rect -= point;
      break;
    case 16:
      rect |= other;
      break;
    case 17:
      rect &= other;
      break;
    case 18:
      rect.Rotate(point, state.angle);
      break;
    case 19:
      rect.ChangeUnits(script.unit());
      break;
    case 20:
      (void)(rect.Overlaps(other) + rect.Disjoint(other) + rect.IsDegenerate());
      break;
    case 21:
      (void)(rect.Contains(point) + rect.Contains(other) + (rect == other));
      break;
    case 22:
      (void)rect.Centre();
      break;
    default: {
      state.margins.MarginTop(script.span());
      state.margins.Scale(script.real(), 0);
      (void)(state.margins == zuMargins());
      break;
    }
  }
  checkRect(rect);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Script script(data, size);
  State state;
  while (!script.done()) {
    try {
      switch (script.byte() % 4) {
        case 0:
          spanStep(script, state);
          break;
        case 1:
          angleStep(script, state);
          break;
        case 2:
          pointStep(script, state);
          break;
        default:
          rectStep(script, state);
          break;
      }
    } catch (const zuExFull& error) {
      const unsigned short id = error.FirstResId();
      if (id != zuMessageIds::kInvalidArgument && id != zuMessageIds::kUnknownUnit &&
          id != zuMessageIds::kAngleRange) {
        std::abort();
      }
    } catch (...) {
      std::abort();
    }
    if (state.angle.ResValue() < 0 || state.angle.ResValue() > zuAngle::kFullTurn) std::abort();
    checkRect(state.rects[0]);
    checkRect(state.rects[1]);
  }
  return 0;
}
