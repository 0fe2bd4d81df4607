#include "support/allocation_count.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {
std::atomic<std::size_t> count{0};
std::atomic<std::size_t> freed{0};
std::atomic<std::size_t> largest{0};
}  // namespace

std::size_t fiar::test::allocationCount() {
  return count;
}
std::size_t fiar::test::liveAllocationCount() {
  return count - freed;
}
std::size_t fiar::test::largestAllocation() {
  return largest.exchange(0);
}

// Takes the place of the language's own; the array form and the one that does not throw come here too.
void* operator new(std::size_t size) {
  ++count;
  if (size > largest) largest = size;
  if (void* const memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
  if (memory != nullptr) ++freed;
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  operator delete(memory);
}
