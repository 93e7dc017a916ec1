#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>

#include "zu/locale/RnLocale.h"

// Counts every allocation through operator new in this test program, so that
// a test can tell whether a stretch of code allocated.
namespace {
std::atomic<long> gAllocations{0};
}  // namespace

// new and delete here pair malloc with free; g++ cannot see that once it
// inlines them into gtest's factories, and warns.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
void* operator new(std::size_t size) {
  gAllocations.fetch_add(1, std::memory_order_relaxed);
  if (void* block = std::malloc(size != 0 ? size : 1)) return block;
  throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  gAllocations.fetch_add(1, std::memory_order_relaxed);
  return std::malloc(size != 0 ? size : 1);
}
void* operator new[](std::size_t size) {
  return operator new(size);
}
void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
  return operator new(size, tag);
}
void operator delete(void* block) noexcept {
  std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
  std::free(block);
}
void operator delete(void* block, const std::nothrow_t&) noexcept {
  std::free(block);
}
void operator delete[](void* block) noexcept {
  std::free(block);
}
void operator delete[](void* block, std::size_t) noexcept {
  std::free(block);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept {
  std::free(block);
}
#pragma GCC diagnostic pop

namespace {

TEST(RnLocaleAllocationTest, ResolvingShortNamesDoesNotAllocate) {
  const RnLocale warmUp("en_US");  // the thread's storage entry is made once
  const zuString held("ja-jp");
  const long before = gAllocations.load();
  int found = 0;
  for (const char* name : {"de_CH", "en-us", "fr_FR.iso88591@euro", "az_cyrl_az", "de_XX"}) {
    found += RnLocale(name).isValid();
  }
  found += RnLocale(held).isValid();
  EXPECT_EQ(gAllocations.load() - before, 0);
  EXPECT_EQ(found, 5);
}

}  // namespace
