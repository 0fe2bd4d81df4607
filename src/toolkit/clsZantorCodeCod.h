#pragma once

#include "platform/text.h"

namespace fiar {

class Toolkit;

/// The toolkit's text coder: a keyed scrambling of its own, for a stable result and not for secrecy.
/// Characters count as their bytes in the ANSI code page. Keeps nothing between calls.
class clsZantorCodeCod {
public:
  /// \param toolkit the toolkit that this is an instance of; outlives it.
  explicit clsZantorCodeCod(Toolkit& toolkit) : toolkit_(toolkit) {}

  /// The coded text: one character of any code for each of `text`, or two digits 0-9 A-F with `hexOutput`.
  /// Every character depends on those before it. An empty text stays empty; an empty key means the built-in
  /// one; a key of fewer than 16 characters is stretched.
  Text EnCodeLight(TextView text, TextView key, bool hexOutput);

  /// The text that EnCodeLight() coded with that key (characters that the code page lacks come back as those
  /// that it has in their place). Empty where hexadecimal input has an odd length or holds anything but
  /// digits 0-9 A-F a-f.
  Text DeCodeLight(TextView coded, TextView key, bool hexInput);

private:
  struct Schedule;

  Schedule schedule(TextView key);

  Toolkit& toolkit_;
};

}  // namespace fiar
