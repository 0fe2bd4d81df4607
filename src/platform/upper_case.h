#pragma once

#include <span>

namespace fiar {

/// Turns every character into its capital letter by the system's own one-to-one mapping, without regard to
/// the user's language. Characters stand for themselves; halves of surrogate pairs may become anything.
void makeUpperByHost(std::span<char16_t> characters);

}  // namespace fiar
