// A client of the installed library: includes the umbrella header and uses
// a few exported classes, so that headers, exports and the package agree.
// Initialising checks that the installed message catalogues are found; a
// length read in points and written in inches checks the measurements.
#include <zu/zuutility.h>

int main() {
  zuUtilityInit init(zuGetUtilityVersion(), 1);
  zuString missing;
  if (!init.CheckResources(missing)) return 1;
  zuUnitSpan width(zuString("72pt"));
  width.ChangeUnits(zuUnitSpan::eInches);
  if (!static_cast<zuString>(width).Equals("1in")) return 1;
  return zuString(static_cast<unsigned short>(16479)).IsEmpty() ? 1 : 0;
}
