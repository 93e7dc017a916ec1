#include "zu/stream/zuBase64StreamTransformer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "zu/stream/zuBase64.h"
#include "zu/stream/zuMemoryStreamFile.h"
#include "zu/stream/zuMemoryStreamFileImpl.h"
#include "zu/testing/zuRandomBytes.h"
#include "zu/testing/zuTestText.h"

namespace {

using zu::testing::randomBytes;

std::string wholeEncoding(const std::string& bytes) {
  return zu::testing::str(Base64Encode(bytes.data(), static_cast<unsigned>(bytes.size()), 1));
}

// Reads `stream` in requests of `size` until AtEof, checking that no read
// writes past its request.
std::string readAll(zuMemoryStreamFile& stream, unsigned size) {
  std::string text;
  std::vector<char> buffer(size + 1);
  int reads = 0;
  while (!stream.AtEof()) {
    buffer[size] = '#';
    const unsigned got = stream.Read(buffer.data(), size);
    EXPECT_EQ(buffer[size], '#') << "written past the request";
    text.append(buffer.data(), got);
    if (++reads > 100000) break;  // a transformer that never ends fails below
  }
  return text;
}

// Writes `bytes` into `file`, puts an encoder on top and goes back to the start.
void encodeInto(zuMemoryStreamFile& file, const std::string& bytes) {
  file.Write(bytes.data(), static_cast<unsigned>(bytes.size()));
  file.PushTransformer(new zuBase64StreamTransformer);
  file.SetPosition(zuFilePosition());
}

TEST(Base64StreamTransformerTest, EveryReadSizeGivesTheWholeEncoding) {
  for (const std::size_t count : {0, 1, 2, 3, 56, 57, 58, 1000}) {
    const std::string bytes = randomBytes(count, static_cast<unsigned>(count));
    const std::string expected = wholeEncoding(bytes);
    for (unsigned size = 1; size <= 254; ++size) {
      zuMemoryStreamFile file(0, zuFileMode::eReadWrite, 0, 0, 0);
      encodeInto(file, bytes);
      ASSERT_EQ(readAll(file, size), expected) << count << " bytes, reads of " << size;
      ASSERT_EQ(file.Read(&size, 1), 0u) << "nothing after the end";
      // toString reads from the start and puts the position back; the
      // file's length and block are the body's.
      const zuFilePosition somewhere(std::min<std::size_t>(size, count), zuFilePosition::eStart);
      file.SetPosition(somewhere);
      ASSERT_EQ(zu::testing::str(file.toString()), expected);
      ASSERT_EQ(file.GetPosition(), somewhere);
      ASSERT_EQ(std::string(static_cast<const char*>(file), file.Length()), bytes);
    }
  }
}

TEST(Base64StreamTransformerTest, RestartsAndForwards) {
  zuMemoryStreamFileImpl body(0, 0);
  body.Write("Man is", 6);
  body.SetPosition(zuFilePosition());
  zuBase64StreamTransformer encoder;
  encoder.Initialize(&body);
  char text[16];
  ASSERT_EQ(encoder.Read(text, 3), 3u);  // "TWF", "u" kept for the next read
  std::unique_ptr<zuStreamFileTransformer> copy(encoder.Clone());
  EXPECT_EQ(copy->Next(), nullptr) << "a clone is not linked";
  EXPECT_EQ(copy->Read(text, 16), 1u) << "but keeps the spill";
  EXPECT_EQ(text[0], 'u');
  encoder.SetPosition(zuFilePosition());
  ASSERT_EQ(encoder.Read(text, 16), 8u);
  EXPECT_EQ(std::string(text, 8), "TWFuIGlz");
  EXPECT_EQ(encoder.Write(" here", 5), 5u) << "writes pass down";
  encoder.ChangeSize(zuFilePosition(3, zuFilePosition::eStart));  // passes down too
  encoder.SetPosition(zuFilePosition());
  ASSERT_EQ(encoder.Read(text, 16), 4u);
  EXPECT_EQ(std::string(text, 4), "TWFu");

  // With nothing beneath: no bytes either way, at the end, position 0.
  zuBase64StreamTransformer alone;
  zuStreamFileTransformer plain;
  for (zuStreamFileTransformer* link : {static_cast<zuStreamFileTransformer*>(&alone), &plain}) {
    EXPECT_EQ(link->Read(text, 16), 0u);
    EXPECT_EQ(link->Write(text, 16), 0u);
    EXPECT_TRUE(link->AtEof());
    EXPECT_EQ(link->GetPosition(), zuFilePosition());
  }
}

}  // namespace
