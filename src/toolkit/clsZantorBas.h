#pragma once

#include <cstdint>
#include <string_view>

#include "platform/text.h"

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

  /// The number in binary digits, rounded first to four decimals and then to a whole number, both times to
  /// the even one of two that are equally near. With `padTo8` zeros are put in front up to the next multiple
  /// of eight digits. Negative numbers have no useful form: their digits carry signs. Throws
  /// std::overflow_error where the whole number does not fit in 32 bits.
  static Text dec2bin(double value, bool padTo8);

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

  /// The base64 form of bytes, padded and without line breaks.
  static Text base64(std::string_view bytes);

  /// The text in lines of `width` characters (> 0) that are joined, not ended, by CR LF; the last line may be
  /// shorter.
  static Text brokenIntoLines(TextView text, std::size_t width);

  /// A text of `length` random letters and digits that depends on the time too, so that it differs from call
  /// to call however the generator is seeded.
  Text uniqueText(std::size_t length);

private:
  Toolkit& toolkit_;
  std::int16_t ideFlag_ = 0;
};

}  // namespace fiar
