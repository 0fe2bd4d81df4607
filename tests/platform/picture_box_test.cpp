#include "platform/picture_box.h"

#include <gtest/gtest.h>

namespace fiar {
namespace {

void drawPicture(PictureBox& box, Color rim, TextView text) {
  box.Cls();
  box.FillStyle = FillStyle::Solid;
  box.FillColor = kGreen;
  box.Circle(10, 10, 5, rim);
  box.FillStyle = FillStyle::Transparent;
  box.Circle(10, 10, 5, rim);
  box.Line(0, 0, 5, 5, rim);
  box.Print(text);
}

TEST(PictureBox, RedrawingTheSameGivesAnEqualListInTheSameMemory) {
  PictureBox box;
  drawPicture(box, kBlack, u"one");
  const DrawingList shown = box.drawing();
  const auto* commands = box.drawing().commands.data();
  const auto* characters = box.drawing().characters.data();
  drawPicture(box, kBlack, u"one");
  EXPECT_EQ(box.drawing(), shown);
  EXPECT_EQ(box.drawing().commands.data(), commands);
  EXPECT_EQ(box.drawing().characters.data(), characters);
  drawPicture(box, kWhite, u"one");
  EXPECT_NE(box.drawing(), shown);
  drawPicture(box, kBlack, u"two");
  EXPECT_NE(box.drawing(), shown);
}

TEST(PictureBox, CommandsKeepTheDrawingStateOfTheirMoment) {
  PictureBox box;
  box.DrawWidth = 3;
  drawPicture(box, kBlack, u"text");
  box.DrawWidth = -4;
  box.Line(0, 0, 1, 1, kBlack);
  const auto& commands = box.drawing().commands;
  ASSERT_EQ(commands.size(), 5U);
  EXPECT_TRUE(commands[0].filled);
  EXPECT_EQ(commands[0].fill, kGreen);
  EXPECT_FALSE(commands[1].filled);
  EXPECT_EQ(commands[2].drawWidth, 3);
  EXPECT_EQ(commands[4].drawWidth, 1);
}

TEST(PictureBox, TextsFollowEachOtherDownFromThePrintingPosition) {
  PictureBox box;
  box.Font.points = 10;
  box.CurrentX = 7;
  box.Print(u"one");
  box.Print(u"");
  box.Print(u"two");
  const DrawingList& drawing = box.drawing();
  EXPECT_EQ(drawing.text(drawing.commands[0]), u"one");
  EXPECT_EQ(drawing.text(drawing.commands[1]), u"");
  EXPECT_EQ(drawing.text(drawing.commands[2]), u"two");
  EXPECT_EQ(drawing.commands[0].x1, 7);
  EXPECT_EQ(drawing.commands[1].x1, 0);
  EXPECT_GE(drawing.commands[1].y1, 200);  // 10 points are 200 twips
  EXPECT_EQ(drawing.commands[2].y1, 2 * drawing.commands[1].y1);
  box.Cls();
  EXPECT_EQ(box.CurrentY, 0);
}

TEST(ComboBox, RaisesClickWhenTheSelectionChangesAndOnlyThen) {
  ComboBox list;
  list.AddItem(u"a");
  list.AddItem(u"b");
  int clicks = 0;
  list.Click = [&] { ++clicks; };
  struct Case {
    int select, selected, clicks;
  };
  for (const auto& [select, selected, total] :
       {Case{1, 1, 1}, {1, 1, 1}, {2, 1, 1}, {-2, 1, 1}, {0, 0, 2}, {-1, -1, 3}}) {
    list.setListIndex(select);
    EXPECT_EQ(list.ListIndex(), selected);
    EXPECT_EQ(clicks, total);
  }
}

}  // namespace
}  // namespace fiar
