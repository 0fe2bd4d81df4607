// Reads tagged text of any kind, and short ones also in the obvious way, step after step.
//
// Input: the path, a line feed, and the text, one byte a character.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string_view>

#include "support/windows_1252.h"
#include "toolkit/clsZantorXml.h"

namespace fiar {
namespace {

using Position = std::ptrdiff_t;  // counts from 1; 0 is "not found"

Position size(const Text& text) {
  return static_cast<Position>(text.size());
}

// The first place from `from` on where `what` stands, in any letter case.
Position find(const Text& text, const Text& what, Position from) {
  const auto start = static_cast<std::size_t>(from - 1);
  return from < 1 ? 0 : static_cast<Position>(toUpper(text).find(toUpper(what), start) + 1);
}

Text part(const Text& text, Position from, Position count) {
  if (from > size(text) || count <= 0) return {};
  return text.substr(static_cast<std::size_t>(from - 1), static_cast<std::size_t>(count));
}

// The first place of an opening tag, with attributes or without.
Position findOpening(const Text& text, const Text& name, Position from) {
  const Position a = find(text, u"<" + name + u">", from);
  const Position b = find(text, u"<" + name + u" ", from);
  return a == 0 || (b != 0 && b < a) ? b : a;
}

// The number that a text begins with, after spaces; 0 where it begins with none.
double leadingNumber(TextView text) {
  std::string number;
  for (const char16_t c : trimSpaces(text)) number += c < 0x80 ? static_cast<char>(c) : '?';
  return std::strtod(number.substr(0, number.find_first_not_of("+-.0123456789eE")).c_str(), nullptr);
}

struct ObviousReader {
  Text lastElement;

  // As clsZantorXml::getTag(). nullopt for malformed text that it reads in a more sensible way than the steps
  // would: an element without room for a content, and one more element after an unclosed one.
  std::optional<Text> getTag(Text text, const Text& path, Text& params, const Text& defaultValue,
                             const Text& notFoundValue, bool outermost = true) {
    if (path.empty()) return u"ERR: Wrong Key";
    const std::size_t separator = path.find(u'\\');
    Text name = path.substr(0, separator);
    double n = leadingNumber(clsZantorXml::getBetween(name, u"[", u"]", false, false));
    if (n != 0) {
      name.resize(name.find(u'['));
    } else {
      n = 1;
    }
    if (outermost) expandSelfClosing(text, name);
    std::optional<Text> result = findElement(text, name, n, notFoundValue);
    if (!result) return std::nullopt;
    if (*result != notFoundValue && !result->empty()) {
      const auto g = static_cast<Position>(result->find(u'>') + 1);
      const auto l = static_cast<Position>(result->rfind(u'<'));
      if (l < g) return std::nullopt;
      result = part(*result, g + 1, l - g);
      if (separator != Text::npos) {
        result = getTag(*result, path.substr(separator + 1), params, defaultValue, notFoundValue, false);
        if (!result) return std::nullopt;
        result = Text(trimSpaces(*result));
      }
    }
    if (result->empty()) result = defaultValue;
    if (!outermost) return result;
    const Text head = clsZantorXml::getBetween(lastElement, u"<", u">", false, true);
    const Position s = find(head, u" ", 1);
    const Position g = find(head, u">", 1);
    if (s != 0 && g > s) params = part(lastElement, s + 1, g - s - 1);
    if (!notFoundValue.empty() && *result == notFoundValue) params.clear();
    return result;
  }

private:
  static void expandSelfClosing(Text& text, const Text& name) {
    Position pos = 0;
    while ((pos = findOpening(text, name, pos + 1)) != 0) {
      const Position g = find(text, u">", pos);
      if (g <= pos + size(name) + 1 || part(text, g - 1, 1) != u"/") continue;
      const Text inner = clsZantorXml::getBetween(part(text, pos, g - pos + 1), u"<", u"/>", false, false);
      const Text element = Text(u"<").append(trimSpaces(inner)).append(u"></").append(name).append(u">");
      text = replaced(text, Text(u"<").append(inner).append(u"/>"), element);
    }
  }

  std::optional<Text> findElement(Text text, const Text& name, double n, const Text& notFoundValue) {
    const Text closeTag = u"</" + name + u">";
    Text element;
    Position pos = 0;
    bool unclosed = false;
    for (double i = 1; i <= n; ++i) {
      if (unclosed) return std::nullopt;
      const Position start = findOpening(text, name, pos + 1);
      if (start == 0) return notFoundValue;
      const Position close = find(text, closeTag, start + 1);
      Position end = close + size(name) + 3;
      if (end > start) element = part(text, start, end - start);
      for (int pass = 0; pass <= 1000 && !unclosed; ++pass) {
        const auto count = [&](const Text& tag) {
          return clsZantorXml::countOccurrences(element, tag, false);
        };
        if (count(u"<" + name + u" ") + count(u"<" + name + u">") == count(closeTag)) {
          element = lastElement = Text(trimSpaces(element));
          text = part(text, end, size(text));
          end = 0;
          break;
        }
        const Position next = find(text, closeTag, end);
        // Where there is none, further passes change nothing but `end`.
        unclosed = close == 0 || next == 0;
        end = next + size(name) + 3;
        if (end - start > size(element)) element.append(static_cast<std::size_t>(end - start), u' ');
        const Text head = part(text, start, end - start);
        element.replace(0, head.size(), head);
      }
      pos = end;
    }
    return element;
  }
};

void readEveryWay(const Text& text, const Text& path) {
  constexpr std::size_t kLongestForObviousWay = 400;
  Text params;
  clsZantorXml().getTag(text, path, params, u"d", u"n");
  // What the steps say about a name with marks in it, or with nothing, depends on how its tags overlap.
  const bool plain = !path.starts_with(u'\\') && !path.starts_with(u'[');
  if (!plain || path.find_first_of(u"<>/ ") != Text::npos || text.size() > kLongestForObviousWay) return;
  for (const auto& [defaultValue, notFoundValue] : {std::pair{u"d", u"n"}, {u" d ", u""}}) {
    clsZantorXml reader;
    ObviousReader obvious;
    Text obviousParams = params = u"kept";
    const Text result = reader.getTag(text, path, params, defaultValue, notFoundValue);
    const auto expected = obvious.getTag(text, path, obviousParams, defaultValue, notFoundValue);
    if (!expected) continue;
    if (result != *expected || params != obviousParams) std::abort();
    if (reader.lastElement() != obvious.lastElement) std::abort();
  }
}

}  // namespace
}  // namespace fiar

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fiar::CodePage page = fiar::test::windows1252();
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::size_t line = std::min(bytes.find('\n'), bytes.size());
  fiar::readEveryWay(page.decode(bytes.substr(std::min(line + 1, size))), page.decode(bytes.substr(0, line)));
  return 0;
}
