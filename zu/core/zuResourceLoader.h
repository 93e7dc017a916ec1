// zuResourceLoader: answers requests for the text of a message id.
//
// Message texts live in per-language catalogue files, not in the library.
// zuPosixResourceLoader is the library's loader; an application may put its
// own in front of it (zuPosixResourceLoader::Override) to supply or replace
// texts.
//
//   class MyTexts : public zuResourceLoader {
//     int LoadResource(unsigned short id, zuString& text) override {
//       if (id != 16479) return 0;
//       text = "That value cannot be used here.";
//       return 1;
//     }
//   };
#pragma once

#include "zu/core/zuExport.h"
#include "zu/core/zuString.h"

namespace zu::internal {
struct zuCatalogue;
}

// A loaded message catalogue. Handles are owned by the library and stay
// valid until it unloads; null means "no catalogue".
using zuModule = const zu::internal::zuCatalogue*;

class ZU_EXPORT zuResourceLoader {
 public:
  virtual ~zuResourceLoader();
  // Sets `text` to message `id` and returns 1; returns 0 when the loader has
  // no such message, leaving `text` as it was.
  virtual int LoadResource(unsigned short id, zuString& text) = 0;

 protected:
  zuResourceLoader() = default;
  zuResourceLoader(const zuResourceLoader&) = default;
  zuResourceLoader& operator=(const zuResourceLoader&) = default;
};
