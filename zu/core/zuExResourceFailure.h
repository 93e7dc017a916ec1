// zuExResourceFailure: the message catalogue could not be found.
//
// Its one item is a plain text naming the missing file, since the catalogue
// that would translate it is the thing missing.
//
//   catch (zuExResourceFailure& error) {
//     zuString text = error[0].Text();   // "Unable to locate resource file: ..."
//   }
#pragma once

#include "zu/core/zuException.h"
#include "zu/core/zuExport.h"
#include "zu/core/zuString.h"

class ZU_EXPORT zuExResourceFailure : public zuException {
 public:
  explicit zuExResourceFailure(const zuString& missingFile);
  zuExResourceFailure(const zuExResourceFailure&) = default;
  zuExResourceFailure& operator=(const zuExResourceFailure&) = default;
  ~zuExResourceFailure() override;

  // Copies the name of the missing file into `missingFile`.
  void GetMissingFile(zuString& missingFile) const;

  // Always 1.
  unsigned int Count() const override;
  // For any index, the item (id 0) whose text is "Unable to locate resource
  // file: " and the file name, rewritten on every access. The item is one per
  // thread and stays valid until the next access from that thread.
  const zuExErrItem& operator[](unsigned int index) const override;

 private:
  zuString missingFile_;
};
