#include "toolkit/clsZantorXml.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace fiar {
namespace {

constexpr char16_t kPathSeparator = u'\\';
constexpr TextView kWrongKey = u"ERR: Wrong Key";

// How often an element is extended to the next closing tag before it counts as unclosed; so an element holds
// at most 1000 closing tags of its name besides its own. Odd on purpose.
constexpr int kMostPasses = 1001;

using Positions = std::vector<std::size_t>;

// Where the marker begins, in ascending order; both texts in capitals.
Positions positionsOf(TextView source, TextView marker) {
  Positions positions;
  if (marker.empty()) return positions;
  for (std::size_t at = source.find(marker); at != TextView::npos;
       at = source.find(marker, at + marker.size())) {
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
  // What a conversion takes for infinity or no number is no number here.
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

// Rewrites every self-closing element of a name as one with an empty content and without the spaces before
// "/>". The form without a space after the name ("<name/>") is no element at all. Of several "/" one goes.
Text expandSelfClosing(TextView text, TextView name) {
  const Text upperText = toUpper(text);
  Text closingTag = u"></";
  closingTag.append(name).append(u">");
  Text expanded;
  std::size_t copied = 0;
  std::size_t tagEnd = 0;
  for (const std::size_t start : positionsOf(upperText, u"<" + toUpper(name) + u" ")) {
    if (tagEnd <= start) tagEnd = text.find(u'>', start);
    if (tagEnd == TextView::npos) break;
    if (text[tagEnd - 1] != u'/' || start < copied) continue;
    expanded.append(text.substr(copied, start - copied)).append(u"<");
    expanded.append(trimSpaces(text.substr(start + 1, tagEnd - start - 2))).append(closingTag);
    copied = tagEnd + 1;
  }
  return expanded.append(text.substr(copied));
}

// Finds the elements of one name in a text, one after the other.
class ElementFinder {
public:
  ElementFinder(TextView text, TextView name) : text_(text), openLength_(name.size() + 2) {
    const Text upperText = toUpper(text);
    const Text upperName = toUpper(name);
    const Positions plain = positionsOf(upperText, u"<" + upperName + u">");
    const Positions withAttributes = positionsOf(upperText, u"<" + upperName + u" ");
    std::merge(plain.begin(), plain.end(), withAttributes.begin(), withAttributes.end(),
               std::back_inserter(opens_));
    closes_ = positionsOf(upperText, u"</" + upperName + u">");
  }

  // Goes on to the next element; false when there is none. Every call comes closer to the end of the text.
  bool findNext() {
    const auto open = std::lower_bound(opens_.cbegin(), opens_.cend(), next_);
    if (open == opens_.cend()) return false;
    const std::size_t start = *open;
    const auto close = std::lower_bound(closes_.cbegin(), closes_.cend(), start + 1);
    if (close != closes_.cend()) {
      take(open, close);
    } else {
      takeUnclosed(start);
    }
    if (balanced_) matched_ = element_;
    return true;
  }

  // The element with its tags; in malformed text it may end at the last closing tag or be a fragment.
  TextView element() const { return element_; }
  // The last element that had as many closing tags as opening ones; empty when none had.
  TextView matched() const { return matched_; }

private:
  using Position = Positions::const_iterator;

  // Extends the element that begins at `open` from closing tag to closing tag until it is balanced.
  void take(Position open, Position close) {
    const std::size_t start = *open;
    const std::size_t closeLength = openLength_ + 1;
    std::size_t end = *close + closeLength;
    std::ptrdiff_t unclosed = -1;
    balanced_ = false;
    for (int pass = 0; pass < kMostPasses; ++pass) {
      const auto behind = std::upper_bound(open, opens_.cend(), end - openLength_);
      unclosed += behind - open;
      open = behind;
      balanced_ = unclosed == 0;
      if (balanced_ || ++close == closes_.cend()) break;
      end = *close + closeLength;
      --unclosed;
    }
    element_ = text_.substr(start, end - start);
    if (balanced_) {
      rest_ = next_ = end;
    } else {
      // Never closed: those inside it can still be read. Given up: deliberately one character is skipped.
      next_ = close == closes_.cend() ? start + 1 : end + 1;
    }
  }

  // Deliberate: without a closing tag behind it an element ends where an opening tag would that stood first
  // in the rest of the text; the element before it stays where that is not behind its start.
  void takeUnclosed(std::size_t start) {
    const std::size_t end = rest_ + openLength_;
    if (end > start) {
      element_ = text_.substr(start, end - start);
      balanced_ = start != rest_;
    }
    next_ = start + 1;
    if (balanced_) rest_ = next_ = end;
  }

  TextView text_;
  std::size_t openLength_;
  Positions opens_;
  Positions closes_;
  std::size_t rest_ = 0;  // where the text begins that follows the last balanced element
  std::size_t next_ = 0;  // from where on the next opening tag is searched
  TextView element_;
  bool balanced_ = false;
  TextView matched_;
};

// What stands between the first tag of an element and its last one; empty where there is no room for it.
TextView withoutTags(TextView element) {
  const std::size_t first = element.find(u'>') + 1;
  const std::size_t last = element.rfind(u'<');
  return first < last ? element.substr(first, last - first) : TextView();
}

// The attributes of the element's first tag; absent when it has none.
std::optional<Text> attributesOf(const Text& element) {
  const Text head = clsZantorXml::getBetween(element, u"<", u">", false, true);
  const std::size_t space = head.find(u' ');
  if (space == Text::npos) return std::nullopt;
  return head.substr(space + 1, head.size() - space - 2);
}

// Gives a number its old value back.
class Restore {
public:
  explicit Restore(float& number) : number_(number), before_(number) {}
  Restore(const Restore&) = delete;
  Restore& operator=(const Restore&) = delete;
  Restore(Restore&&) = delete;
  Restore& operator=(Restore&&) = delete;
  ~Restore() { number_ = before_; }

private:
  float& number_;
  float before_;
};

}  // namespace

Text clsZantorXml::getTag(TextView xmlText, TextView tagPath, Text& tagParams, TextView defaultValue,
                          TextView notFoundValue) {
  if (tagPath.empty()) return Text(kWrongKey);
  const Restore restore(callDepth_);
  Text result = followPath(xmlText, tagPath, defaultValue, notFoundValue);
  // Deliberate: where nothing matched, these are the attributes of an earlier match.
  if (std::optional<Text> attributes = attributesOf(lastElement_)) tagParams = std::move(*attributes);
  if (!notFoundValue.empty() && result == notFoundValue) tagParams.clear();
  return result;
}

// Each name of a path is a call of its own, inside the one before it, in all but the stack that it takes: a
// path may have as many names as a text has tags.
Text clsZantorXml::followPath(TextView xmlText, TextView tagPath, TextView defaultValue,
                              TextView notFoundValue) {
  Text text(xmlText);
  Text result(kWrongKey);
  int callers = 0;
  for (++callDepth_; !tagPath.empty(); ++callDepth_, ++callers) {
    const std::size_t separator = tagPath.find(kPathSeparator);
    const Step step(tagPath.substr(0, separator));
    if (callDepth_ == 1) text = expandSelfClosing(text, step.name);
    result = readElement(text, step.name, step.number, notFoundValue);
    // Deliberate: an element that reads exactly as the value for an absent one counts as absent.
    const bool found = !result.empty() && result != notFoundValue;
    if (found) result = Text(withoutTags(result));
    if (!found || separator == TextView::npos) {
      if (result.empty()) result = defaultValue;
      break;
    }
    text = std::exchange(result, Text(kWrongKey));
    tagPath.remove_prefix(separator + 1);
  }
  for (; callers > 0; --callers) {
    const TextView inner = trimSpaces(result);
    if (inner.size() < result.size()) result = Text(inner);
    if (result.empty()) result = defaultValue;
  }
  return result;
}

Text clsZantorXml::readElement(TextView text, TextView name, double number, TextView notFoundValue) {
  ElementFinder finder(text, name);
  bool found = true;
  for (double i = 1; found && i <= number; ++i) found = finder.findNext();
  if (!finder.matched().empty()) lastElement_ = trimSpaces(finder.matched());
  return Text(found ? finder.element() : notFoundValue);
}

float clsZantorXml::countOccurrences(TextView source, TextView marker, bool /*flag*/) {
  if (source.empty()) return -1;
  return static_cast<float>(positionsOf(toUpper(source), toUpper(marker)).size());
}

Text clsZantorXml::getBetween(TextView source, TextView openMark, TextView closeMark, bool caseSensitive,
                              bool withMarks) {
  const auto find = [caseSensitive](TextView text, TextView mark, std::size_t from) {
    return caseSensitive ? text.find(mark, from) : toUpper(text).find(toUpper(mark), from);
  };
  const std::size_t open = find(source, openMark, 0);
  if (open == TextView::npos) return {};
  const std::size_t close = find(source, closeMark, open + 1);
  if (close == TextView::npos) return {};
  if (withMarks) return Text(source.substr(open, close - open + closeMark.size()));
  const std::size_t inner = open + openMark.size();
  return Text(inner < close ? source.substr(inner, close - inner) : TextView());
}

}  // namespace fiar
