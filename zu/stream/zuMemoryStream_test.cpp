#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <utility>

#include "zu/core/zuException.h"
#include "zu/core/zuMessageIds.h"
#include "zu/stream/internal/zuStreamAllocation.h"
#include "zu/stream/zuFixedMemoryStreamFile.h"
#include "zu/stream/zuMemoryStreamFile.h"
#include "zu/testing/zuTestText.h"
#include "zu/testing/zuThrown.h"

namespace {

using Base = zuFilePosition::PositionBase;
using zu::testing::str;
using zu::testing::thrown;

std::string contents(const zuMemoryStreamFileImpl& body) {
  return std::string(body.Data(), body.Length());
}

TEST(MemoryStreamTest, FilePositionsClampTo32BitsAndCompareTheirBases) {
  zuFilePosition position(1L << 40, zuFilePosition::eEnd);
  EXPECT_EQ(position.GetOffset(), 2147483647);
  position.SetOffset(-(1L << 40));
  EXPECT_EQ(position.GetOffset(), -2147483647 - 1);
  EXPECT_NE(position, zuFilePosition(-2147483647 - 1, zuFilePosition::eCurrent));
}

// Moves and size changes are checked against a model below; here the
// capacity, which the model does not see.
TEST(MemoryStreamTest, GrowableBodyRoundsUpAndDoublesItsStep) {
  zuMemoryStreamFileImpl body(0, 16);
  const std::pair<unsigned, unsigned> steps[] = {{16, 32}, {1, 32}, {16, 64}, {31, 64}, {1, 128}};
  for (const auto& [write, capacity] : steps) {  // bytes written, capacity after
    body.Write(std::string(write, 'a').data(), write);
    EXPECT_EQ(body.Capacity(), capacity) << body.Length();
  }
  zuMemoryStreamFileImpl defaultStep(0, 0);
  defaultStep.Write("x", 1);
  EXPECT_EQ(defaultStep.Capacity(), 1024u);
}

TEST(MemoryStreamTest, GrowableBodyCopiesDeepAndRefusesThePastLimit) {
  zuMemoryStreamFileImpl body(4, 4);
  body.Write("abcdef", 6);
  body.SetPosition(zuFilePosition(2, zuFilePosition::eStart));
  zuMemoryStreamFileImpl copy(body);
  copy.Write("XY", 2);
  EXPECT_EQ(contents(body), "abcdef");
  body = copy;
  EXPECT_EQ(contents(body), "abXYef");
  EXPECT_EQ(body.GetPosition().GetOffset(), 4);
  std::unique_ptr<zuStreamFileTransformer> clone(body.Clone());
  EXPECT_EQ(clone->GetPosition().GetOffset(), 4);

  body.SetPosition(zuFilePosition(0, zuFilePosition::eEnd));
  EXPECT_THROW(body.ChangeSize(zuFilePosition(2147483647, zuFilePosition::eCurrent)), zuExMemory);
  EXPECT_THROW(body.Write("z", 0x7FFFFFFFu), zuExMemory);
  zu::internal::failStreamAllocationAfter(0);
  EXPECT_THROW(body.Write(std::string(100, 'z').data(), 100), zuExMemory);
  zu::internal::failStreamAllocationAfter(0);
  EXPECT_THROW(body = copy, zuExMemory);
  zu::internal::failStreamAllocationAfter(-1);
  EXPECT_EQ(contents(body), "abXYef") << "nothing changed";
  EXPECT_EQ(body.GetPosition().GetOffset(), 6);
  EXPECT_THROW(zuMemoryStreamFileImpl(0x80000000u, 0), zuExMemory);
}

// Where the caller's pointer names the block is checked against the model
// below; here the rounding, the length argument and the borrowed buffer.
TEST(MemoryStreamTest, FixedBodyMovesAndReportsTheNewBlock) {
  char* block = new char[10];
  {
    zuFixedMemoryStreamImpl body(&block, 10, 1024, ~0UL);
    EXPECT_EQ(body.Clone(), nullptr);
    body.Write("abcdefghijk", 11);
    body.Write(std::string(2000, 'z').data(), 2000);
    EXPECT_EQ(body.Capacity(), 2048u) << "ceil(2011 / 2048) * 2048";
  }
  delete[] block;

  // A length above the capacity is cut; low 32 bits all ones mean the capacity.
  const std::pair<unsigned long, unsigned> lengths[] = {
      {4, 4}, {11, 10}, {~0UL, 10}, {0x1FFFFFFFFUL, 10}};
  for (const auto& [length, expected] : lengths) {
    char* lent = new char[10];
    EXPECT_EQ(zuFixedMemoryStreamImpl(&lent, 10, 0, length).Length(), expected) << length;
    delete[] lent;
  }

  char plain[4] = {'a', 'b', 'c', 'd'};
  zuFixedMemoryStreamImpl borrowed(plain, 4);
  borrowed.SetPosition(zuFilePosition(0, zuFilePosition::eEnd));
  borrowed.Write("ef", 2);  // copies into a block of its own
  borrowed.Write(std::string(2000, 'g').data(), 2000);
  EXPECT_EQ(std::string(borrowed.Data(), 6), "abcdef");
  EXPECT_EQ(std::string(plain, 4), "abcd") << "the caller's buffer is left alone";
  zu::internal::failStreamAllocationAfter(0);
  EXPECT_THROW(borrowed.Write(std::string(5000, 'h').data(), 5000), zuExMemory);
  zu::internal::failStreamAllocationAfter(-1);
  EXPECT_EQ(borrowed.Length(), 2006u);
}

// Random writes, reads, moves and size changes on a body and on a
// std::string model of it.
template <class Body>
void checkAgainstModel(Body& body, std::string model, char** callerPointer, unsigned seed) {
  std::mt19937 random(seed);
  std::size_t position = 0;
  char buffer[300];
  for (int step = 0; step < 100000; ++step) {
    const unsigned size = random() % 300;
    switch (random() % 3) {
      case 0: {
        for (unsigned i = 0; i < size; ++i) buffer[i] = static_cast<char>(random());
        ASSERT_EQ(body.Write(buffer, size), size);
        model.replace(position, std::min<std::size_t>(size, model.size() - position), buffer, size);
        position += size;
        break;
      }
      case 1: {
        const unsigned got = body.Read(buffer, size);
        ASSERT_EQ(got, std::min<std::size_t>(size, model.size() - position));
        ASSERT_EQ(std::string(buffer, got), model.substr(position, got));
        position += got;
        break;
      }
      default: {  // a move or a size change, from any base
        const auto base = static_cast<Base>(random() % 3);
        const long offset = static_cast<long>(random() % 601) - 300;
        const long from = base == 0 ? 0 : base == 1 ? long(position) : long(model.size());
        const std::size_t target = std::max<long>(0, from + offset);
        if (random() % 2 == 0) {
          body.SetPosition(zuFilePosition(offset, base));
          position = std::min(target, model.size());
        } else {
          body.ChangeSize(zuFilePosition(offset, base));
          model.resize(target, '\0');
          position = std::min(position, target);
        }
      }
    }
    ASSERT_EQ(body.GetPosition().GetOffset(), long(position));
    ASSERT_EQ(body.Length(), model.size());
    ASSERT_EQ(body.AtEof() != 0, position == model.size());
    ASSERT_TRUE(callerPointer == nullptr || *callerPointer == body.Data());
  }
  ASSERT_EQ(std::string(body.Data(), body.Length()), model);
}

TEST(MemoryStreamTest, BodiesMatchAStringModel) {
  for (const unsigned step : {0u, 1u, 7u, 4096u}) {
    zuMemoryStreamFileImpl growable(step, step);
    checkAgainstModel(growable, "", nullptr, step);
    char* lent = new char[step + 1];
    std::memset(lent, 'q', step + 1);
    {
      zuFixedMemoryStreamImpl fixed(&lent, step + 1, step, ~0UL);
      checkAgainstModel(fixed, std::string(step + 1, 'q'), &lent, step + 1);
    }
    delete[] lent;
  }
}

TEST(MemoryStreamTest, StreamFilesCheckAccessAndReportAllocation) {
  zuMemoryStreamFile file(0, zuFileMode::eReadWrite, 8, 8, 1);

  zuFixedMemoryStreamFile text("read me", 0);
  zuFixedMemoryStreamFile buffer("abc\0def", 7, 0);
  zuFixedMemoryStreamFile string(zuString("copied"), 0);
  zuMemoryStreamFile writeOnly(0, zuFileMode::eWrite, 0, 0, 0);
  char byte = 0;
  constexpr unsigned short kRefused = zuMessageIds::kInvalidArgument;
  EXPECT_EQ(thrown([&] { text.Write("x", 1); }).FirstResId(), kRefused);
  EXPECT_EQ(thrown([&] { buffer.ChangeSize(zuFilePosition()); }).FirstResId(), kRefused);
  EXPECT_EQ(thrown([&] { writeOnly.Read(&byte, 1); }).FirstResId(), kRefused);
  EXPECT_EQ(thrown([&] { file.PushTransformer(nullptr); }).FirstResId(), kRefused);
  EXPECT_EQ(str(text.toString()), "read me");
  EXPECT_EQ(str(buffer.toString()), std::string("abc\0def", 7));
  EXPECT_EQ(str(string.toString()), "copied");
  EXPECT_EQ(zuFixedMemoryStreamFile(static_cast<const char*>(nullptr), 0).Length(), 0u);

  char* lent = nullptr;
  {
    zuFixedMemoryStreamFile writer(&lent, 0, 256, 0, 0, zuFileMode::eReadWrite);
    writer.Write("abc", 3);
    EXPECT_EQ(lent, static_cast<const char*>(writer));
  }
  EXPECT_EQ(std::string(lent, 3), "abc");
  delete[] lent;

  // The body (or the growable body's first block, after one allocation)
  // fails to be created; the stream file reports 16656. The fixed forms
  // share one check.
  const auto failing = [](int after, auto&& create) {
    zu::internal::failStreamAllocationAfter(after);
    const unsigned short id = thrown(create).FirstResId();
    zu::internal::failStreamAllocationAfter(-1);
    return id;
  };
  constexpr unsigned short kNoBody = zuMessageIds::kStreamAllocation;
  EXPECT_EQ(failing(0, [] { zuMemoryStreamFile(0, zuFileMode::eRead, 0, 0, 0); }), kNoBody);
  EXPECT_EQ(failing(1, [] { zuMemoryStreamFile(0, zuFileMode::eRead, 64, 0, 0); }), kNoBody);
  EXPECT_EQ(failing(0, [] { zuFixedMemoryStreamFile("x", 0); }), kNoBody);
}

}  // namespace
