#pragma once

#include <cstddef>

namespace fiar::test {

/// How many objects or arrays the test program has created on the heap so far.
std::size_t allocationCount();
/// How many of them are still there.
std::size_t liveAllocationCount();
/// The bytes of the largest one since this was asked last.
std::size_t largestAllocation();

}  // namespace fiar::test
