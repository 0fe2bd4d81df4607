#pragma once

#include <cstdint>

#include "platform/platform.h"
#include "toolkit/currency.h"

namespace fiar {

/// General helpers of the toolkit.
class clsZantorBas {
public:
  explicit clsZantorBas(const Platform& platform) : platform_(platform) {}

  /// Whether the program runs inside its development environment; asking resets the answer to false. The
  /// built program is never told that it does.
  bool IsRunningInIde();

  /// A setting's text as yes (true) or no (false), in Slovenian or English and in any letter case. Spaces
  /// count; any other text is no.
  static bool GetTF(TextView text);

  /// The number, rounded to a whole one, in binary digits; with `padTo8` zeros are put in front up to the
  /// next multiple of eight digits. Negative numbers have no useful form: their digits carry signs. Throws
  /// std::overflow_error where the whole number does not fit in 32 bits.
  static Text dec2bin(Currency value, bool padTo8);

  /// Lets `seconds` (any number; not above 0: none) pass and delivers pending events meanwhile, at least
  /// once. Midnight makes no difference; a clock that is set back prolongs the wait by no more than an hour,
  /// one that is set forward may end it early.
  void DelayEvents(double seconds);

private:
  Platform platform_;
  std::int16_t ideFlag_ = 0;
};

}  // namespace fiar
