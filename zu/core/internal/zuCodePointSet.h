// Set membership by whole code points, for the string members that take a
// set of characters as a zuString (SkipOver, tokens, XML escaping).
#pragma once

class zuString;

namespace zu::internal {

// 1 when one of the code points of `set` (decoded leniently) is `codePoint`.
int codePointSetContains(const zuString& set, unsigned int codePoint);

}  // namespace zu::internal
