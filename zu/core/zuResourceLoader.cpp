#include "zu/core/zuResourceLoader.h"

zuResourceLoader::~zuResourceLoader() = default;
