// A client of the installed library: includes the umbrella header and uses
// a few exported classes, so that headers, exports and the package agree.
#include <zu/zuutility.h>

int main() { return 0; }
