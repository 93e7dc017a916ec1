#include <zu/zuutility.h>

int main() { return 0; }
