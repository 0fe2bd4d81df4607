#include "toolkit/clsZantorXml.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace fiar {
namespace {

constexpr TextView kWrongKey = u"ERR: Wrong Key";

// An element is given up after this many closing tags that leave it unbalanced: it may hold 1000 elements of
// its own name. Deliberate: one would expect an even 1000.
constexpr int kMostPasses = 1001;

using Positions = std::vector<std::size_t>;

std::size_t findIgnoringCase(TextView source, TextView marker, std::size_t from) {
  if (from > source.size()) return TextView::npos;
  const auto same = [](char16_t left, char16_t right) { return toUpper(left) == toUpper(right); };
  const auto begin = source.begin() + static_cast<std::ptrdiff_t>(from);
  const auto found = std::search(begin, source.end(), marker.begin(), marker.end(), same);
  if (found == source.end() && !marker.empty()) return TextView::npos;
  return static_cast<std::size_t>(found - source.begin());
}

// Where the marker begins, in ascending order and without overlaps; an empty marker is nowhere.
Positions positionsOf(TextView source, TextView marker) {
  Positions positions;
  if (marker.empty()) return positions;
  for (std::size_t at = findIgnoringCase(source, marker, 0); at != TextView::npos;
       at = findIgnoringCase(source, marker, at + marker.size())) {
    positions.push_back(at);
  }
  return positions;
}

// The number that a text begins with; 0 where it begins with none.
double leadingNumber(TextView text) {
  std::string digits;
  for (const char16_t character : trimSpaces(text)) {
    digits += character < 0x80 ? static_cast<char>(character) : ' ';
  }
  // "inf" and "nan" are not numbers here, though from_chars() reads them.
  if (digits.find_first_of("0123456789.") > 1) return 0;
  double value = 0;
  const char* const begin = digits.data() + (digits.starts_with('+') ? 1 : 0);
  const auto [end, error] = std::from_chars(begin, digits.data() + digits.size(), value);
  // Too large or too small: strtod() tells which.
  return error == std::errc::result_out_of_range ? std::strtod(begin, nullptr) : value;
}

// One name of a path and which element of that name is meant, counted from 1.
struct Step {
  TextView name;
  double number = 1;

  explicit Step(TextView piece) : name(piece) {
    const double index = leadingNumber(clsZantorXml::getBetween(piece, u"[", u"]", false, false));
    if (index == 0) return;
    number = index;
    name = piece.substr(0, piece.find(u'['));
  }
};

// What follows the last "<" of a text, without the spaces and "/" at its ends.
TextView contentOfLastTag(TextView text) {
  text.remove_prefix(text.rfind(u'<') + 1);
  text.remove_prefix(std::min(text.find_first_not_of(u' '), text.size()));
  return text.substr(0, text.find_last_not_of(u" /") + 1);
}

// Expands the self-closing elements of a name ("<name attributes/>"; "<name/>" is no element at all) in their
// order, each together with all its exact copies. What ended in "//>" is self-closing again after that.
// Deliberate: one would expect the search to go on after the element. It goes on from the same position,
// where other text may stand by then because copies in front have changed their length.
Text expandSelfClosing(TextView text, TextView name) {
  const Text opening = Text(u"<").append(name).append(u" ");
  const Text closingTag = Text(u"</").append(name).append(u">");
  // A self-closing element has only one ">", its last character, and so has each copy. That makes it the end
  // of one of these pieces, and the copies of one element agree in the content of the last tag.
  const std::vector<TextView> originals = split(text, u">");
  std::vector<Text> pieces(originals.begin(), originals.end());
  std::vector<Text> closingTags(pieces.size());  // what expanding has put after the ">" of a piece
  std::map<TextView, std::vector<std::size_t>> alike;
  for (std::size_t i = 0; i + 1 < pieces.size(); ++i) {
    if (pieces[i].ends_with(u'/')) alike[contentOfLastTag(originals[i])].push_back(i);
  }
  const auto length = [&](std::size_t i) { return std::ssize(pieces[i]) + 1 + std::ssize(closingTags[i]); };
  std::size_t current = 0;
  for (std::size_t from = 0; current + 1 < pieces.size();) {
    const bool selfClosing = pieces[current].ends_with(u'/');
    const std::size_t start = selfClosing ? findIgnoringCase(pieces[current], opening, from) : Text::npos;
    from = 0;
    if (start == Text::npos) {
      ++current;
      continue;
    }
    const Text element = pieces[current].substr(start);
    const Text inner(trimSpaces(TextView(element).substr(1, element.size() - 2)));
    std::ptrdiff_t grown = 0;  // how much longer the text in front of the element has become
    for (const std::size_t copy : alike[contentOfLastTag(originals[current])]) {
      if (!pieces[copy].ends_with(element)) continue;
      pieces[copy].replace(pieces[copy].size() - element.size() + 1, Text::npos, inner);
      closingTags[copy] += closingTag;
      if (copy < current) grown += std::ssize(inner) + 1 + std::ssize(closingTag) - std::ssize(element);
    }
    auto next = static_cast<std::ptrdiff_t>(start) + 1 - grown;
    while (next < 0 && current > 0) next += length(--current);
    while (current + 1 < pieces.size() && next >= length(current)) next -= length(current++);
    from = static_cast<std::size_t>(std::max<std::ptrdiff_t>(next, 0));
  }
  Text result = pieces[0];
  for (std::size_t i = 1; i < pieces.size(); ++i) {
    result.append(u">").append(closingTags[i - 1]).append(pieces[i]);
  }
  return result;
}

// Where the tags of one name begin in a text, in ascending order.
struct Tags {
  Positions opens;
  Positions closes;
  std::size_t openLength;

  Tags(TextView text, TextView name) : openLength(name.size() + 2) {
    const Text open = Text(u"<").append(name);
    const Positions plain = positionsOf(text, open + u">");
    const Positions withAttributes = positionsOf(text, open + u" ");
    std::merge(plain.begin(), plain.end(), withAttributes.begin(), withAttributes.end(),
               std::back_inserter(opens));
    closes = positionsOf(text, Text(u"</").append(name).append(u">"));
  }

  std::size_t closeLength() const { return openLength + 1; }
};

// Where an element stands, tags included, and from where on the next one is searched.
struct Element {
  std::size_t begin = 0;
  std::size_t end = 0;
  std::size_t next = 0;
  bool balanced = false;  ///< with as many closing tags of its name as opening ones
};

// The element whose opening tag is at `begin` ends with the first closing tag that makes it balanced. Where
// none does, it ends with the last one that was looked at; the next element may then be inside it.
Element elementAt(const Tags& tags, std::size_t begin) {
  auto open = std::lower_bound(tags.opens.begin(), tags.opens.end(), begin);
  auto close = std::lower_bound(tags.closes.begin(), tags.closes.end(), begin + 1);
  std::size_t end = begin;
  std::ptrdiff_t unclosed = 0;
  for (int pass = 0; close != tags.closes.end(); ++close, ++pass) {
    end = *close + tags.closeLength();
    // Deliberate: one would expect the search to go on at `end`.
    if (pass == kMostPasses) return {begin, end, end + 1, false};
    const auto firstAfter = std::upper_bound(open, tags.opens.end(), end - tags.openLength);
    unclosed += firstAfter - open - 1;
    open = firstAfter;
    if (unclosed == 0) return {begin, end, end, true};
  }
  return {begin, end, begin + 1, false};
}

// The element whose opening tag is at `begin` and that no closing tag follows. Deliberate: one would expect
// it to reach to the end of the text, but it ends where an opening tag at the start of `rest` would end.
// Where that is not after `begin`, the element before it is taken once more.
Element unclosedElementAt(const Tags& tags, std::size_t begin, std::size_t rest, const Element& before) {
  Element element = before;
  const std::size_t end = rest + tags.openLength;
  if (begin < end) element = {begin, end, end, begin != rest};
  element.next = element.balanced ? end : begin + 1;
  return element;
}

// What stands between the first tag of an element and its last one; empty where there is no room for it.
TextView withoutTags(TextView element) {
  const std::size_t first = element.find(u'>') + 1;
  const std::size_t last = element.rfind(u'<');
  return first < last ? element.substr(first, last - first) : TextView();
}

// The attributes of the element's first tag; nullopt if it has none.
std::optional<Text> attributesOf(const Text& element) {
  const Text head = clsZantorXml::getBetween(element, u"<", u">", false, true);
  const std::size_t space = head.find(u' ');
  if (space == Text::npos) return std::nullopt;
  return head.substr(space + 1, head.size() - space - 2);
}

}  // namespace

Text clsZantorXml::getTag(TextView xmlText, TextView tagPath, Text& tagParams, TextView defaultValue,
                          TextView notFoundValue) {
  if (tagPath.empty()) return Text(kWrongKey);
  Text result = followPath(xmlText, split(tagPath, u"\\"), defaultValue, notFoundValue);
  // Deliberate: one would expect none where nothing matched, but these are those of an earlier match.
  if (std::optional<Text> attributes = attributesOf(lastElement_)) tagParams = std::move(*attributes);
  if (!notFoundValue.empty() && result == notFoundValue) tagParams.clear();
  return result;
}

Text clsZantorXml::followPath(TextView xmlText, const std::vector<TextView>& path, TextView defaultValue,
                              TextView notFoundValue) {
  Text result = expandSelfClosing(xmlText, Step(path.front()).name);
  std::size_t depth = 0;
  for (bool found = true; found; ++depth) {
    const bool last = depth + 1 == path.size();
    if (last && path[depth].empty()) {
      result = kWrongKey;
      break;
    }
    const Step step(path[depth]);
    result = readElement(result, step.name, step.number, notFoundValue);
    // Deliberate: an element that reads exactly as the value for an absent one counts as absent; one would
    // expect it to be found.
    found = !result.empty() && result != notFoundValue;
    if (found) result = Text(withoutTags(result));
    if (!found || last) break;
  }
  if (result.empty()) result = defaultValue;
  // Once for each name that the result is inside of, as the value for an empty result may have spaces.
  for (; depth > 0; --depth) {
    result = Text(trimSpaces(result));
    if (result.empty()) result = defaultValue;
  }
  return result;
}

Text clsZantorXml::readElement(TextView text, TextView name, double number, TextView notFoundValue) {
  const Tags tags(text, name);
  Element element;
  Element matched;
  std::size_t rest = 0;  // where the text begins that follows the last balanced element
  bool found = true;
  for (double i = 1; found && i <= number; ++i) {
    const auto open = std::lower_bound(tags.opens.begin(), tags.opens.end(), element.next);
    found = open != tags.opens.end();
    if (!found) break;
    const bool closed = !tags.closes.empty() && *open < tags.closes.back();
    element = closed ? elementAt(tags, *open) : unclosedElementAt(tags, *open, rest, element);
    if (!element.balanced) continue;
    matched = element;
    rest = element.next;
  }
  const auto part = [text](const Element& e) { return text.substr(e.begin, e.end - e.begin); };
  if (matched.balanced) lastElement_ = trimSpaces(part(matched));
  return Text(found ? part(element) : notFoundValue);
}

float clsZantorXml::countOccurrences(TextView source, TextView marker, bool /*flag*/) {
  if (source.empty()) return -1;
  return static_cast<float>(positionsOf(source, marker).size());
}

Text clsZantorXml::getBetween(TextView source, TextView openMark, TextView closeMark, bool caseSensitive,
                              bool withMarks) {
  const auto find = [=](TextView mark, std::size_t from) {
    return caseSensitive ? source.find(mark, from) : findIgnoringCase(source, mark, from);
  };
  const std::size_t open = find(openMark, 0);
  if (open == TextView::npos) return {};
  const std::size_t close = find(closeMark, open + 1);
  if (close == TextView::npos) return {};
  if (withMarks) return Text(source.substr(open, close - open + closeMark.size()));
  const std::size_t inner = open + openMark.size();
  return Text(inner < close ? source.substr(inner, close - inner) : TextView());
}

}  // namespace fiar
