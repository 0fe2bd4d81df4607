#pragma once

#include <cstdint>

#include "platform/text.h"
#include "toolkit/currency.h"

namespace fiar {

class Toolkit;

/// General helpers of the toolkit.
class clsZantorBas {
public:
  /// \param toolkit the toolkit that this is an instance of; outlives it.
  explicit clsZantorBas(Toolkit& toolkit) : toolkit_(toolkit) {}

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

  /// The characters in another order: every second one, and in between the rest from the end on; a text of
  /// odd length gets a "$" first.
  static Text MesajText(TextView text);

  /// A check sum of a text in `n` bytes, as `n` characters or, with `hexOutput`, 2 n hexadecimal digits.
  /// Empty for an empty text or an `n` below 1.
  Text StrCheckSum2(TextView source, int n, bool hexOutput);

private:
  Toolkit& toolkit_;
  std::int16_t ideFlag_ = 0;
};

}  // namespace fiar
