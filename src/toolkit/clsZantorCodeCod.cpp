#include "toolkit/clsZantorCodeCod.h"

#include <array>
#include <cstdint>
#include <numeric>
#include <optional>
#include <string>
#include <utility>

#include "toolkit/clsZantorBas.h"
#include "toolkit/toolkit.h"

namespace fiar {
namespace {

constexpr std::size_t kShortestKey = 16;
constexpr int kStretchedBytes = 32;
constexpr TextView kHexDigits = u"0123456789ABCDEF";

// The two built-in texts stand in pieces and in no order, so that they are not found in the .exe by chance.
// Their letters beyond ASCII have the same byte in the Western and the Central European code page.
Text salt() {
  constexpr std::array<TextView, 5> kPieces{u"w\u00B17u", u"Kd\u00E9", u"\u0161-3x", u"q\u00F7R",
                                            u"9\u00DFm"};
  Text text;
  for (const std::size_t piece : {3U, 0U, 4U, 1U, 2U}) text += kPieces[piece];
  return text;
}

Text defaultKey() {
  constexpr std::array<TextView, 4> kPieces{u"T\u017E4", u"hV8", u"\u00B0pe", u"J2\u00E1c"};
  constexpr std::array<std::uint8_t, 4> kCodes{0x6E, 0x35, 0x59, 0x7A};
  Text text;
  for (const std::size_t piece : {2U, 0U, 3U, 1U}) {
    text += kPieces[piece];
    text += static_cast<char16_t>(kCodes[piece]);
  }
  return text;
}

// Codes and their sums are unsigned, in 64 bits.
std::uint64_t code(char byte) {
  return static_cast<std::uint8_t>(byte);
}

char character(std::uint64_t code) {
  return static_cast<char>(code);
}

// The remainder after division by 256; that of a difference below zero is not negative either.
std::uint64_t mod256(std::uint64_t sum) {
  return sum % 256;
}

std::uint64_t sumOfCodes(const std::string& bytes) {
  return std::accumulate(bytes.begin(), bytes.end(), std::uint64_t{0},
                         [](std::uint64_t sum, char byte) { return sum + code(byte); });
}

// The element after the one at that index, in a circle. Deliberate: one would expect the element at the
// index, but the first position meets the second one.
std::uint64_t following(const std::string& ring, std::size_t index) {
  return code(ring[(index + 1) % ring.size()]);
}

Text toHex(const std::string& bytes) {
  Text digits;
  for (const char byte : bytes) {
    digits += kHexDigits[code(byte) / 16];
    digits += kHexDigits[code(byte) % 16];
  }
  return digits;
}

// Returns nullopt if the text is not made of pairs of hexadecimal digits.
std::optional<std::string> fromHex(TextView digits) {
  if (digits.size() % 2 != 0) return std::nullopt;
  std::string bytes;
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    const std::size_t high = kHexDigits.find(toUpper(digits[i]));
    const std::size_t lowDigit = kHexDigits.find(toUpper(digits[i + 1]));
    if (high == TextView::npos || lowDigit == TextView::npos) return std::nullopt;
    bytes += character(16 * high + lowDigit);
  }
  return bytes;
}

}  // namespace

// What is derived from a key: bytes that repeat along the text, and one that is added everywhere.
struct clsZantorCodeCod::Schedule {
  std::string work;
  std::uint64_t offset;

  // What is added to the byte at an index (from 0) besides its byte of `work`.
  std::uint64_t shift(std::size_t index) const { return offset + index + 1; }
};

clsZantorCodeCod::Schedule clsZantorCodeCod::schedule(TextView key) {
  const CodePage& codePage = toolkit_.platform().codePage;
  Text fullKey = key.empty() ? defaultKey() : Text(key);
  if (fullKey.size() < kShortestKey) {
    fullKey = toolkit_.bas().StrCheckSum2(fullKey, kStretchedBytes, true);
  }
  const std::string keyBytes = codePage.encode(fullKey);
  std::string work = codePage.encode(clsZantorBas::MesajText(salt() + fullKey));
  const std::uint64_t start = sumOfCodes(keyBytes) % 200 + 25;
  for (char& byte : work) byte = character(mod256(start + code(byte)));
  const std::uint64_t offset = (start + sumOfCodes(work)) % 240 + 7;
  for (std::size_t i = 0; i < work.size(); ++i) {
    work[i] = character(following(keyBytes, i) ^ code(work[i]));
  }
  return {std::move(work), offset};
}

Text clsZantorCodeCod::EnCodeLight(TextView text, TextView key, bool hexOutput) {
  if (text.empty()) return {};
  const CodePage& codePage = toolkit_.platform().codePage;
  const Schedule coder = schedule(key);
  std::string bytes = codePage.encode(text);
  std::uint64_t chain = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const std::uint64_t mask = following(coder.work, i);
    const std::uint64_t mixed = mod256(coder.shift(i) + code(bytes[i]) + mask);
    chain = mod256(chain + (mixed ^ mask));
    bytes[i] = character(chain);
  }
  return hexOutput ? toHex(bytes) : codePage.decode(bytes);
}

Text clsZantorCodeCod::DeCodeLight(TextView coded, TextView key, bool hexInput) {
  const CodePage& codePage = toolkit_.platform().codePage;
  std::optional<std::string> bytes = hexInput ? fromHex(coded) : codePage.encode(coded);
  if (!bytes || bytes->empty()) return {};
  const Schedule coder = schedule(key);
  std::uint64_t chain = 0;
  for (std::size_t i = 0; i < bytes->size(); ++i) {
    const std::uint64_t mask = following(coder.work, i);
    const std::uint64_t next = code((*bytes)[i]);
    const std::uint64_t mixed = mod256(next - chain) ^ mask;
    (*bytes)[i] = character(mod256(mixed - mask - coder.shift(i)));
    chain = next;
  }
  return codePage.decode(*bytes);
}

}  // namespace fiar
