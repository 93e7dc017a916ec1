// zuBase64StreamTransformer: a transformer whose reads give the Base64
// encoding (lines of 76 characters broken by a line feed, padded at the
// end) of the stream beneath it. Writes pass the bytes down unchanged.
//
//   zuMemoryStreamFile file(0, zuFileMode::eReadWrite, 0, 0, 0);
//   file.Write(bytes, count);
//   file.PushTransformer(new zuBase64StreamTransformer);   // file owns it
//   file.SetPosition(zuFilePosition());
//   char text[4096];
//   while (!file.AtEof()) {
//     unsigned got = file.Read(text, sizeof text);        // the next characters
//     ...
//   }
//
// Each read fills the request unless the encoding ends first: it reads
// beneath until it has enough bytes for the request (a multiple of 3, so
// that the parts join up) or the stream beneath ends, encodes them into the
// caller's buffer and keeps the characters that did not fit for the next
// read. It never writes past `size` and allocates nothing per call.
// SetPosition, ChangeSize and Initialize restart the encoder (they act on
// the stream beneath): reading from the start again gives the whole
// encoding. One thread at a time.
#pragma once

#include "zu/core/zuExport.h"
#include "zu/stream/zuStreamFileTransformer.h"

class ZU_EXPORT zuBase64StreamTransformer : public zuStreamFileTransformer {
 public:
  zuBase64StreamTransformer();
  // Copies the encoder's state; the copy is not linked.
  zuBase64StreamTransformer(const zuBase64StreamTransformer& other);
  // Copies the encoder's state; keeps this transformer's own link.
  zuBase64StreamTransformer& operator=(const zuBase64StreamTransformer& other);
  ~zuBase64StreamTransformer() override;

  // Up to `size` characters of the encoding; 0 once it is all read.
  unsigned Read(void* buffer, unsigned size) override;
  // Non-zero when the stream beneath is at its end and no characters are
  // kept for the next read.
  int AtEof() const override;
  // Restart the encoder, then act beneath.
  void SetPosition(const zuFilePosition& position) override;
  void ChangeSize(const zuFilePosition& size) override;
  void Initialize(zuStreamFileTransformer* next) override;
  // A new unlinked copy that the caller deletes.
  zuStreamFileTransformer* Clone() const override;

 private:
  // Characters one read produces beyond its request: at most one group, a
  // line feed and the padding.
  static constexpr unsigned kSpill = 16;

  void Restart();

  char spill_[kSpill] = {};
  unsigned spillStart_;
  unsigned spillEnd_;
  long bits_;
  long charCount_;
  // The last part, with its padding, has been encoded.
  bool finished_;
};
