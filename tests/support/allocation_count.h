#pragma once

#include <cstddef>

namespace fiar::test {

/// How many objects or arrays the test program has created on the heap so far.
std::size_t allocationCount();

}  // namespace fiar::test
