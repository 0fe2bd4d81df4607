#include "platform/text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>

namespace fiar {
namespace {

constexpr char16_t kFirstNonAscii = 0x80;
constexpr char16_t kFirstSurrogate = 0xD800;
constexpr char16_t kLastSurrogate = 0xDFFF;

using CaseTable = std::array<char16_t, 65536>;

std::unique_ptr<const CaseTable> makeCaseTable() {
  auto table = std::make_unique<CaseTable>();
  for (std::size_t i = 0; i < table->size(); ++i) (*table)[i] = static_cast<char16_t>(i);
  makeUpperByHost(*table);
  for (std::size_t i = kFirstNonAscii; i < table->size(); ++i) {
    char16_t& upper = (*table)[i];
    const bool surrogate = i >= kFirstSurrogate && i <= kLastSurrogate;
    if (surrogate || upper < kFirstNonAscii) upper = static_cast<char16_t>(i);
  }
  return table;
}

// The system is asked once for all characters: asking it for each one is slow, and texts are compared often.
const CaseTable& caseTable() {
  static const std::unique_ptr<const CaseTable> table = makeCaseTable();
  return *table;
}

}  // namespace

char16_t toUpper(char16_t character) {
  if (character < kFirstNonAscii) {
    const bool small = character >= u'a' && character <= u'z';
    return small ? static_cast<char16_t>(character - u'a' + u'A') : character;
  }
  return caseTable()[character];
}

Text toUpper(TextView text) {
  Text upper(text);
  for (char16_t& character : upper) character = toUpper(character);
  return upper;
}

bool equalIgnoringCase(TextView left, TextView right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char16_t a, char16_t b) { return a == b || toUpper(a) == toUpper(b); });
}

std::size_t hashIgnoringCase(TextView text) {
  // FNV-1a, a character at a time.
  constexpr std::uint64_t kOffset = 14695981039346656037U;
  constexpr std::uint64_t kPrime = 1099511628211U;
  std::uint64_t hash = kOffset;
  for (const char16_t character : text) hash = (hash ^ toUpper(character)) * kPrime;
  return static_cast<std::size_t>(hash);
}

TextView trimSpaces(TextView text) {
  const std::size_t first = text.find_first_not_of(u' ');
  if (first == TextView::npos) return {};
  return text.substr(first, text.find_last_not_of(u' ') - first + 1);
}

std::vector<TextView> split(TextView text, TextView separator) {
  std::vector<TextView> pieces;
  for (std::size_t end = text.find(separator); end != TextView::npos; end = text.find(separator)) {
    pieces.push_back(text.substr(0, end));
    text.remove_prefix(end + separator.size());
  }
  pieces.push_back(text);
  return pieces;
}

Text replaced(TextView text, TextView what, TextView by) {
  Text result;
  std::size_t copied = 0;
  for (std::size_t at = text.find(what); at != TextView::npos; at = text.find(what, copied)) {
    result.append(text.substr(copied, at - copied)).append(by);
    copied = at + what.size();
  }
  return result.append(text.substr(copied));
}

}  // namespace fiar
