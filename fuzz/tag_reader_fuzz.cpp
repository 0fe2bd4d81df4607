// Reads tagged text of any kind, and short ones also in the obvious way, step after step.
//
// Input: the path, a line feed, and the text, one byte a character.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "toolkit/clsZantorXml.h"

namespace fiar {
namespace {

// Places are counted from 1; 0 is "not found". This one is the first from `from` on, in any letter case.
std::size_t find(const Text& text, const Text& what, std::size_t from) {
  return toUpper(text).find(toUpper(what), from - 1) + 1;
}

// The first place of an opening tag, with attributes or without.
std::size_t findOpening(const Text& text, const Text& name, std::size_t from) {
  const std::size_t plain = find(text, u"<" + name + u">", from);
  const std::size_t withAttributes = find(text, u"<" + name + u" ", from);
  return plain == 0 || withAttributes == 0 ? plain + withAttributes : std::min(plain, withAttributes);
}

// The number that a text begins with, after spaces; 0 where it begins with none.
double leadingNumber(TextView text) {
  std::string number;
  for (const char16_t c : trimSpaces(text)) number += c < 0x80 ? static_cast<char>(c) : '?';
  return std::strtod(number.substr(0, number.find_first_not_of("+-.0123456789eE")).c_str(), nullptr);
}

struct ObviousReader {
  Text defaultValue;
  Text notFoundValue;
  Text params = u"kept";
  Text lastElement = {};
  // Whether the product may read the text in a more sensible way: an element without room for a content, or
  // one more element after an unclosed one.
  bool malformed = false;

  Text getTag(Text text, const Text& path, bool outermost = true) {
    if (path.empty()) return u"ERR: Wrong Key";
    const std::size_t separator = path.find(u'\\');
    Text name = path.substr(0, separator);
    const double index = leadingNumber(clsZantorXml::getBetween(name, u"[", u"]", false, false));
    if (index != 0) name.resize(name.find(u'['));
    if (outermost) expandSelfClosing(text, name);
    Text result = findElement(text, name, index == 0 ? 1 : index);
    if (result != notFoundValue && !result.empty()) {
      const std::size_t begin = result.find(u'>') + 1;
      const std::size_t end = result.rfind(u'<');
      if (end < begin) malformed = true;
      result = result.substr(begin, end - begin);
      if (separator != Text::npos) result = trimSpaces(getTag(result, path.substr(separator + 1), false));
    }
    if (result.empty()) result = defaultValue;
    if (!outermost) return result;
    const std::size_t space = find(lastElement, u" ", 1);
    const std::size_t end = find(lastElement, u">", 1);
    if (space != 0 && space < end) params = lastElement.substr(space, end - space - 1);
    if (!notFoundValue.empty() && result == notFoundValue) params.clear();
    return result;
  }

private:
  static void expandSelfClosing(Text& text, const Text& name) {
    std::size_t start = 0;
    while ((start = findOpening(text, name, start + 1)) != 0) {
      const std::size_t end = find(text, u">", start);
      if (end == 0 || text[end - 2] != u'/') continue;
      const Text element = text.substr(start - 1, end - start + 1);
      const TextView inner = TextView(element).substr(1, element.size() - 3);
      const Text expanded = Text(u"<").append(trimSpaces(inner)).append(u"></").append(name).append(u">");
      text = replaced(text, element, expanded);
    }
  }

  Text findElement(Text text, const Text& name, double n) {
    const Text closeTag = u"</" + name + u">";
    Text element;
    for (double i = 1; i <= n; ++i) {
      const std::size_t start = findOpening(text, name, 1);
      if (start == 0) return notFoundValue;
      std::size_t close = find(text, closeTag, start + 1);
      const bool closed = close != 0;
      std::size_t end = close + closeTag.size();
      if (end > start) element = text.substr(start - 1, end - start);
      while (!isBalanced(element, name)) {
        close = find(text, closeTag, end);
        end = close + closeTag.size();
        if (end > start + element.size()) element = text.substr(start - 1, end - start);
        if (closed && close != 0) continue;
        // It stays unbalanced, however often that is repeated.
        if (i + 1 <= n) malformed = true;
        return element;
      }
      element = lastElement = trimSpaces(element);
      text.erase(0, end - 1);
    }
    return element;
  }

  static bool isBalanced(const Text& element, const Text& name) {
    const auto count = [&](const Text& tag) { return clsZantorXml::countOccurrences(element, tag, false); };
    return count(u"<" + name + u" ") + count(u"<" + name + u">") == count(u"</" + name + u">");
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t kLongestForObviousWay = 400;
  const Text input(data, data + size);
  const std::size_t line = std::min(input.find(u'\n'), size);
  const Text path = input.substr(0, line);
  const Text text = input.substr(std::min(line + 1, size));
  Text params;
  clsZantorXml().getTag(text, path, params, u"d", u"n");
  // What the steps say about a name with marks in it, or with nothing, depends on how its tags overlap.
  const bool plain = !path.starts_with(u'\\') && !path.starts_with(u'[');
  if (!plain || path.find_first_of(u"<>/ ") != Text::npos || text.size() > kLongestForObviousWay) return 0;
  for (ObviousReader obvious : {ObviousReader{u"d", u"n"}, {u" d ", u""}}) {
    clsZantorXml reader;
    params = obvious.params;
    const Text result = reader.getTag(text, path, params, obvious.defaultValue, obvious.notFoundValue);
    const bool same = result == obvious.getTag(text, path) && params == obvious.params &&
                      reader.lastElement() == obvious.lastElement;
    if (!same && !obvious.malformed) std::abort();
  }
  return 0;
}

}  // namespace fiar
