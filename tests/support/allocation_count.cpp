#include "support/allocation_count.h"

#include <atomic>
#include <cstdlib>
#include <new>

static std::atomic<std::size_t> count{0};

std::size_t fiar::test::allocationCount() {
  return count;
}

// Takes the place of the language's own; the array form and the one that does not throw come here too.
void* operator new(std::size_t size) {
  ++count;
  if (void* const memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}
