#pragma once

#include <exception>
#include <utility>

#include "platform/text.h"

namespace fiar {

/// A failure after which the program cannot go on, in words for the player.
class Error : public std::exception {
public:
  explicit Error(Text message) : message_(std::move(message)) {}

  const Text& message() const { return message_; }

private:
  Text message_;
};

}  // namespace fiar
