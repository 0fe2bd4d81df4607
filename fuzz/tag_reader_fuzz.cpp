// Reads tagged text of any kind. Input: the path, a line feed, and the text, one byte a character.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "obvious_tag_reader.h"
#include "support/windows_1252.h"
#include "toolkit/clsZantorXml.h"

namespace {

using fiar::Text;
using fiar::TextView;

constexpr std::size_t kLongestForObviousWay = 400;
constexpr TextView kWellFormed = u"<wellformed a=\"1\">7</wellformed>";

void require(bool holds) {
  if (!holds) std::abort();
}

// What the steps say about a name with marks in it, or with nothing, depends on how its tags overlap.
bool isPlain(TextView path) {
  return !path.starts_with(u'\\') && !path.starts_with(u'[') && path.find_first_of(u"<>/ ") == TextView::npos;
}

void compareWithObviousWay(const Text& text, const Text& path, const Text& defaultValue,
                           const Text& notFoundValue) {
  fiar::clsZantorXml reader;
  fiar::fuzz::ObviousTagReader obvious;
  Text params = u"kept";
  Text obviousParams = params;
  const Text result = reader.getTag(text, path, params, defaultValue, notFoundValue);
  const std::optional<Text> expected = obvious.getTag(text, path, obviousParams, defaultValue, notFoundValue);
  if (!expected) return;
  require(result == *expected);
  require(params == obviousParams);
  require(reader.lastElement() == obvious.lastElement);
}

void readEveryWay(const Text& text, const Text& path) {
  fiar::clsZantorXml reader;
  Text params;
  reader.getTag(text, path, params, u"d", u"n");
  if (fiar::toUpper(text).find(u"WELLFORMED") == Text::npos) {
    for (const Text& whole : {text + Text(kWellFormed), Text(kWellFormed) + text}) {
      require(reader.getTag(whole, u"wellformed", params, u"d", u"n") == u"7");
      require(params == u"a=\"1\"");
    }
  }
  if (text.size() > kLongestForObviousWay || !isPlain(path)) return;
  compareWithObviousWay(text, path, u"d", u"n");
  compareWithObviousWay(text, path, u" d ", u"");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fiar::CodePage page = fiar::test::windows1252();
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::size_t line = std::min(bytes.find('\n'), bytes.size());
  readEveryWay(page.decode(bytes.substr(std::min(line + 1, size))), page.decode(bytes.substr(0, line)));
  return 0;
}
