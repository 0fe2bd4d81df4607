#include "obvious_tag_reader.h"

#include <algorithm>
#include <cstdlib>
#include <string>

#include "toolkit/clsZantorXml.h"

// All positions count from 1 here, and 0 is "not found".
namespace fiar::fuzz {
namespace {

using Position = std::ptrdiff_t;

Position size(const Text& text) {
  return static_cast<Position>(text.size());
}

// The first place from `from` on where `what` stands, in any letter case.
Position find(const Text& text, const Text& what, Position from) {
  const Text upperText = toUpper(text);
  return from < 1
             ? 0
             : static_cast<Position>(upperText.find(toUpper(what), static_cast<std::size_t>(from - 1)) + 1);
}

Text part(const Text& text, Position from, Position count) {
  if (from > size(text) || count <= 0) return {};
  return text.substr(static_cast<std::size_t>(from - 1), static_cast<std::size_t>(count));
}

Text partFrom(const Text& text, Position from) {
  return part(text, from, size(text));
}

Position count(const Text& source, const Text& marker) {
  return static_cast<Position>(clsZantorXml::countOccurrences(source, marker, false));
}

void replaceAll(Text& text, const Text& what, const Text& by) {
  for (std::size_t at = text.find(what); at != Text::npos; at = text.find(what, at + by.size())) {
    text.replace(at, what.size(), by);
  }
}

// The number that a text begins with, after spaces; 0 where it begins with none.
double leadingNumber(TextView text) {
  std::string number;
  for (const char16_t character : trimSpaces(text))
    number += character < 0x80 ? static_cast<char>(character) : '?';
  return std::strtod(number.substr(0, number.find_first_not_of("+-.0123456789eE")).c_str(), nullptr);
}

void expandSelfClosing(Text& text, const Text& name) {
  Position pos = 0;
  while (true) {
    const Position a = find(text, u"<" + name + u">", pos + 1);
    const Position b = find(text, u"<" + name + u" ", pos + 1);
    pos = a;
    if (a == 0 && b == 0) return;
    if (b == 0 || (a != 0 && a < b)) continue;
    pos = b;
    const Position g = find(text, u">", b);
    if (g == 0 || part(text, g - 1, 1) != u"/") continue;
    const Text inner = clsZantorXml::getBetween(part(text, b, g - b + 1), u"<", u"/>", false, false);
    Text element(u"<");
    element.append(trimSpaces(inner)).append(u"></").append(name).append(u">");
    replaceAll(text, u"<" + inner + u"/>", element);
  }
}

struct Found {
  Text element;
  bool absent = false;
  bool open = false;  // what comes next is left open
};

Found findElement(Text text, const Text& name, double n, Text& lastElement) {
  const Text closeTag = u"</" + name + u">";
  Found found;
  Text& element = found.element;
  Position pos = 0;
  for (double i = 1; i <= n; ++i) {
    if (found.open) return found;
    const Position a = find(text, u"<" + name + u">", pos + 1);
    const Position b = find(text, u"<" + name + u" ", pos + 1);
    if (a == 0 && b == 0) {
      found.absent = true;
      return found;
    }
    const Position start = a == 0 || (b != 0 && b < a) ? b : a;
    const Position first = find(text, closeTag, start + 1);
    Position end = first + size(name) + 3;
    if (end > start) element = part(text, start, end - start);
    bool balanced = false;
    bool ranOut = false;
    for (int passes = 0; passes <= 1000 && !balanced && !ranOut;) {
      ++passes;
      const Position opens = count(element, u"<" + name + u" ") + count(element, u"<" + name + u">");
      if (opens - count(element, closeTag) == 0) {
        element = Text(trimSpaces(element));
        lastElement = element;
        text = partFrom(text, end);
        end = 0;
        balanced = true;
      } else {
        const Position next = find(text, closeTag, end);
        // From here on the passes change nothing but `end`.
        ranOut = first == 0 || next == 0;
        end = next + size(name) + 3;
        if (end - start > size(element)) element.append(static_cast<std::size_t>(end - start), u' ');
        if (end > start) {
          const Text head = part(text, start, end - start);
          element.replace(0, head.size(), head);
        }
      }
    }
    found.open = !balanced && ranOut;
    pos = end;
  }
  found.open = false;
  return found;
}

}  // namespace

std::optional<Text> ObviousTagReader::getTag(Text text, const Text& tagPath, Text& tagParams,
                                             const Text& defaultValue, const Text& notFoundValue) {
  if (tagPath.empty()) return u"ERR: Wrong Key";
  const std::size_t separator = tagPath.find(u'\\');
  Text name = tagPath.substr(0, separator);
  double n = leadingNumber(clsZantorXml::getBetween(name, u"[", u"]", false, false));
  if (n != 0) {
    name.resize(name.find(u'['));
  } else {
    n = 1;
  }
  if (callDepth_ == 0) expandSelfClosing(text, name);
  Found found = findElement(text, name, n, lastElement);
  if (found.open) return std::nullopt;
  Text result = found.absent ? notFoundValue : found.element;
  if (result != notFoundValue && !result.empty()) {
    const auto g = static_cast<Position>(result.find(u'>') + 1);
    const auto l = static_cast<Position>(result.rfind(u'<'));
    if (l < g) return std::nullopt;
    result = part(result, g + 1, l - g);
    if (separator != Text::npos) {
      ++callDepth_;
      const std::optional<Text> inner =
          getTag(result, tagPath.substr(separator + 1), tagParams, defaultValue, notFoundValue);
      --callDepth_;
      if (!inner) return std::nullopt;
      result = Text(trimSpaces(*inner));
    }
  }
  if (result.empty()) result = defaultValue;
  if (callDepth_ == 0) {
    const Text head = clsZantorXml::getBetween(lastElement, u"<", u">", false, true);
    const Position s = find(head, u" ", 1);
    const Position g = find(head, u">", 1);
    if (s != 0 && g > s) tagParams = part(lastElement, s + 1, g - s - 1);
    if (!notFoundValue.empty() && result == notFoundValue) tagParams.clear();
  }
  return result;
}

}  // namespace fiar::fuzz
