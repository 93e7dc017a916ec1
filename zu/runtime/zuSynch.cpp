#include "zu/runtime/zuSynch.h"

zuSynch::~zuSynch() = default;
