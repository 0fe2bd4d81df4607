#include "platform/text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>

namespace fiar {
namespace {

constexpr char16_t kFirstNonAscii = 0x80;
constexpr char16_t kFirstSurrogate = 0xD800;
constexpr char16_t kFirstLowSurrogate = 0xDC00;
constexpr char16_t kLastSurrogate = 0xDFFF;
constexpr char32_t kFirstSupplementary = 0x10000;
constexpr char32_t kLastCodePoint = 0x10FFFF;
constexpr char32_t kReplacement = 0xFFFD;

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

bool isHighSurrogate(char16_t unit) {
  return unit >= kFirstSurrogate && unit < kFirstLowSurrogate;
}
bool isLowSurrogate(char16_t unit) {
  return unit >= kFirstLowSurrogate && unit <= kLastSurrogate;
}

// The code point that starts at `position`, which moves past it.
char32_t nextCodePoint(TextView text, std::size_t& position) {
  const char16_t unit = text[position++];
  if (isHighSurrogate(unit) && position < text.size() && isLowSurrogate(text[position])) {
    const auto high = static_cast<char32_t>(unit - kFirstSurrogate);
    const auto low = static_cast<char32_t>(text[position++] - kFirstLowSurrogate);
    return kFirstSupplementary + (high << 10) + low;
  }
  return isHighSurrogate(unit) || isLowSurrogate(unit) ? kReplacement : unit;
}

void appendUtf8(std::string& bytes, char32_t codePoint) {
  const auto put = [&bytes](char32_t value) { bytes.push_back(static_cast<char>(value)); };
  const auto tail = [&put, codePoint](int shift) { put(0x80 | ((codePoint >> shift) & 0x3F)); };
  if (codePoint < 0x80) {
    put(codePoint);
  } else if (codePoint < 0x800) {
    put(0xC0 | (codePoint >> 6));
    tail(0);
  } else if (codePoint < kFirstSupplementary) {
    put(0xE0 | (codePoint >> 12));
    tail(6);
    tail(0);
  } else {
    put(0xF0 | (codePoint >> 18));
    tail(12);
    tail(6);
    tail(0);
  }
}

// How many bytes a character takes that starts with `lead`; 0 when none does.
std::size_t utf8Length(std::uint8_t lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead <= 0xDF) return 2;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  if (lead >= 0xF0 && lead <= 0xF4) return 4;
  return 0;
}

// The character at the start of `bytes` and its length; length 0 when it is not well formed.
struct Decoded {
  char32_t codePoint = kReplacement;
  std::size_t length = 0;
};

Decoded decodeUtf8(std::string_view bytes) {
  constexpr std::array<std::uint8_t, 5> kLeadBits{0, 0x7F, 0x1F, 0x0F, 0x07};
  constexpr std::array<char32_t, 5> kSmallest{0, 0, 0x80, 0x800, kFirstSupplementary};
  const auto lead = static_cast<std::uint8_t>(bytes.front());
  const std::size_t length = utf8Length(lead);
  if (length == 0 || length > bytes.size()) return {};
  char32_t codePoint = lead & kLeadBits[length];
  for (const char next : bytes.substr(1, length - 1)) {
    const auto byte = static_cast<std::uint8_t>(next);
    if ((byte & 0xC0) != 0x80) return {};
    codePoint = (codePoint << 6) | (byte & 0x3F);
  }
  const bool surrogate = codePoint >= kFirstSurrogate && codePoint <= kLastSurrogate;
  if (codePoint < kSmallest[length] || codePoint > kLastCodePoint || surrogate) return {};
  return {codePoint, length};
}

void appendUtf16(Text& text, char32_t codePoint) {
  if (codePoint < kFirstSupplementary) {
    text.push_back(static_cast<char16_t>(codePoint));
    return;
  }
  const char32_t offset = codePoint - kFirstSupplementary;
  text.push_back(static_cast<char16_t>(kFirstSurrogate + (offset >> 10)));
  text.push_back(static_cast<char16_t>(kFirstLowSurrogate + (offset & 0x3FF)));
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

std::string toUtf8(TextView text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) appendUtf8(bytes, nextCodePoint(text, position));
  return bytes;
}

Text fromUtf8(std::string_view bytes) {
  Text text;
  text.reserve(bytes.size());
  while (!bytes.empty()) {
    const Decoded next = decodeUtf8(bytes);
    appendUtf16(text, next.codePoint);
    bytes.remove_prefix(std::max<std::size_t>(next.length, 1));
  }
  return text;
}

}  // namespace fiar
