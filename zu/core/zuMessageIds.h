// zuMessageIds: the message id of every failure the library reports, by
// name. The numbers are published (clients test for them with
// zuExFull::HasResId) and each has a text in every shipped catalogue
// (ResourcesEn.msg, Resourcesfr.msg, Resourcesde.msg).
//
//   try {
//     span /= 0;
//   } catch (const zuExFull& error) {
//     if (error.HasResId(zuMessageIds::kInvalidArgument)) { ... }
//   }
#pragma once

namespace zuMessageIds {

inline constexpr unsigned short kInvalidArgument = 16479;
inline constexpr unsigned short kCompoundPicture = 16480;  // argument: the operation
inline constexpr unsigned short kOutOfMemory = 16583;
inline constexpr unsigned short kStreamAllocation = 16656;
inline constexpr unsigned short kInvalidBase64 = 16777;
inline constexpr unsigned short kListIndex = 16984;
inline constexpr unsigned short kUnknownUnit = 17107;  // argument: the unit code
inline constexpr unsigned short kAngleRange = 17174;
inline constexpr unsigned short kInvalidYear = 17185;
inline constexpr unsigned short kInvalidMonth = 17186;
inline constexpr unsigned short kInvalidDay = 17187;
inline constexpr unsigned short kInvalidHour = 17234;
inline constexpr unsigned short kInvalidMinute = 17235;
inline constexpr unsigned short kInvalidSecond = 17236;
inline constexpr unsigned short kInvalidMillisecond = 17237;
// Not failures: the texts that mark a time before and after noon.
inline constexpr unsigned short kMorningMarker = 17244;
inline constexpr unsigned short kAfternoonMarker = 17245;

// Every id above, in increasing order.
inline constexpr unsigned short kAll[] = {
    kInvalidArgument, kCompoundPicture, kOutOfMemory,   kStreamAllocation, kInvalidBase64,
    kListIndex,       kUnknownUnit,     kAngleRange,    kInvalidYear,      kInvalidMonth,
    kInvalidDay,      kInvalidHour,     kInvalidMinute, kInvalidSecond,    kInvalidMillisecond,
    kMorningMarker,   kAfternoonMarker,
};

}  // namespace zuMessageIds
