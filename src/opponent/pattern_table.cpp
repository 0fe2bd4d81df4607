#include "opponent/pattern_table.h"

#include <array>
#include <string>

#include "toolkit/clsZantorBas.h"
#include "toolkit/clsZantorFile.h"

namespace fiar {
namespace {

constexpr TextView kLineEnd = u"\r\n";
constexpr TextView kComma = u",";
constexpr TextView kTableFile = u"spremenljivka.txt";
constexpr std::int16_t kAppendText = 0;

// What a stone adds by its place before the cell, from the farthest to the nearest.
constexpr std::array kWeightByPlace{1, 5, 10, 30};

struct RunBonus {
  TextView pattern;
  int bonus;
};

// What stones that touch the cell in an unbroken run add.
constexpr std::array kRunBonuses{
    RunBonus{u"P1", 50},         RunBonus{u"1P", 50},         RunBonus{u"P11", 100},
    RunBonus{u"1P1", 100},       RunBonus{u"11P", 100},       RunBonus{u"P111", 1000},
    RunBonus{u"1P11", 1000},     RunBonus{u"11P1", 1000},     RunBonus{u"111P", 1000},
    RunBonus{u"P1111", 1000000}, RunBonus{u"1P111", 1000000}, RunBonus{u"11P11", 1000000},
    RunBonus{u"111P1", 1000000}, RunBonus{u"1111P", 1000000},
};

constexpr std::size_t kSideLength = kWeightByPlace.size();

int weightOf(TextView key) {
  int weight = 0;
  for (std::size_t place = 0; place < kSideLength; ++place) {
    if (key[place] == u'1') weight += kWeightByPlace[place];
    if (key[key.size() - 1 - place] == u'1') weight += kWeightByPlace[place];
  }
  for (const RunBonus& run : kRunBonuses) {
    if (key.find(run.pattern) != TextView::npos) weight += run.bonus;
  }
  return weight;
}

void loadLine(TextView line, Toolkit& toolkit) {
  const std::vector<TextView> pieces = split(line, kComma);
  if (pieces.size() < 2) throw PatternTableError(u"a line has no comma: " + Text(line));
  const auto weight = toolkit.platform().regional.number(pieces[1]);
  if (!weight) throw PatternTableError(u"a weight is no number: " + Text(line));
  toolkit.variables().setVar(pieces[0], *weight);
}

}  // namespace

PatternTableError::PatternTableError(TextView reason)
    : Error(Text(u"Resource 102 (the pattern table): ").append(reason)) {}

Text patternKey(int n) {
  return clsZantorBas::dec2bin(n, true).insert(kSideLength, 1, u'P');
}

void loadPatternTable(std::string_view bytes, Toolkit& toolkit) {
  const Text table = toolkit.platform().codePage.decode(bytes);
  for (const TextView line : split(table, kLineEnd)) loadLine(line, toolkit);
}

void genUtezi(Toolkit& toolkit) {
  const Text fileName = toolkit.values().applicationFolder + Text(kTableFile);
  for (int n = 0; n < kPatternCount; ++n) {
    Text line = patternKey(n);
    const Text weight = toolkit.platform().regional.numberText(weightOf(line));
    line.append(kComma).append(weight);
    toolkit.file().AppendToFile(fileName, line, kAppendText);
  }
}

}  // namespace fiar
