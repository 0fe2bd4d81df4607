#include "platform/code_page.h"

#include <gtest/gtest.h>

#include <numeric>

namespace fiar {
namespace {

std::string allBytes() {
  std::string bytes(256, '\0');
  std::iota(bytes.begin(), bytes.end(), '\0');
  return bytes;
}

TEST(CodePages, CarryEveryByteToTextAndBack) {
  const CodePage western(windows1252Characters());
  for (const CodePage* page : {&western, &CodePage::system()}) {
    const Text text = page->decode(allBytes());
    EXPECT_EQ(text.size(), 256U);
    EXPECT_EQ(page->encode(text), allBytes());
    EXPECT_EQ(text.substr(0, 128), fromUtf8(allBytes().substr(0, 128)));
  }
}

TEST(CodePages, Windows1252IsTheWesternSet) {
  const CodePage page(windows1252Characters());
  EXPECT_EQ(page.decode("\x80\x81\x8A\x8E\x9A\x9E\x9F\xA0\xE8\xFF"),
            u"\u20AC\u0081\u0160\u017D\u0161\u017E\u0178\u00A0\u00E8\u00FF");
}

TEST(CodePages, WriteAQuestionMarkForWhatTheyLack) {
  const CodePage page(windows1252Characters());
  EXPECT_EQ(page.encode(u"\u010D?\u4E2D\U0001F600\u0080e"),
            "?????"
            "?e");
}

TEST(CodePages, UseTheLowerByteForACharacterThatStandsTwice) {
  auto characters = windows1252Characters();
  characters[0xFE] = u'x';
  const CodePage page(characters);
  EXPECT_EQ(page.encode(page.decode("\xFE\xFF")), "x\xFF");
}

}  // namespace
}  // namespace fiar
