// Shows developers how the computer sees a game: plays one with seeded random moves of the human and writes
// the board picture, with the weights and the hint on it, as a PPM image.
//
//   board_image FILE [SEED [MOVES [SIZE-INDEX [PIXELS]]]]

#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <random>
#include <span>
#include <string>
#include <vector>

#include "app/mainFrm.h"
#include "forms/painter.h"
#include "support/fake_platform.h"

namespace {

using fiar::BitmapView;
using fiar::Color;
using fiar::TextView;

// Digits of 3 by 5 dots, a row in every three bits from the top: the overlay prints digits only.
constexpr std::array<unsigned, 10> kDigits{075557, 022222, 071747, 071717, 055711,
                                           074717, 074757, 071111, 075757, 075717};
constexpr int kDigitRows = 5;
constexpr int kDigitColumns = 3;

void drawDigits(const BitmapView& target, const fiar::PixelRect& /*area*/, TextView text, int x, int y,
                Color color) {
  for (const char16_t digit : text) {
    for (int row = 0; row < kDigitRows; ++row) {
      for (int column = 0; column < kDigitColumns; ++column) {
        const int shift = 3 * (kDigitRows - 1 - row) + kDigitColumns - 1 - column;
        const bool dot = digit >= u'0' && digit <= u'9' && (kDigits[digit - u'0'] >> shift & 1U) != 0;
        if (dot && x + column < target.width && y + row < target.height)
          target.row(y + row)[x + column] = color;
      }
    }
    x += kDigitColumns + 1;
  }
}

void play(fiar::mainFrm& window, unsigned seed, int moves) {
  std::mt19937 random(seed);
  window.Command1.Click();
  for (int move = 0; move < moves && window.game.player != fiar::kNobody; ++move) {
    // Near the middle, so that there is something to see.
    const auto somewhere = [&] {
      return static_cast<float>(9960 * (0.25 + 0.5 * static_cast<double>(random() % 1000) / 1000));
    };
    window.boardPic.MouseMove(0, 0, somewhere(), somewhere());
    window.boardPic.MouseUp(fiar::kLeftButton, 0, 0, 0);
    window.Timer1.Tick();
  }
  window.Timer1.Tick();
}

void writeImage(const char* file, const BitmapView& image) {
  std::ofstream out(file, std::ios::binary);
  out << "P6\n" << image.width << ' ' << image.height << "\n255\n";
  for (int y = 0; y < image.height; ++y) {
    for (const std::uint32_t pixel : std::span(image.row(y), static_cast<std::size_t>(image.width))) {
      out.put(static_cast<char>(pixel >> 16))
          .put(static_cast<char>(pixel >> 8))
          .put(static_cast<char>(pixel));
    }
  }
  if (!out.flush()) throw std::runtime_error(std::string("cannot write ") + file);
}

int run(std::span<char*> arguments) {
  if (arguments.size() < 2) {
    std::cerr << "usage: board_image FILE [SEED [MOVES [SIZE-INDEX [PIXELS]]]]\n";
    return 2;
  }
  const auto number = [&](std::size_t index, int fallback) {
    return index < arguments.size() ? std::stoi(arguments[index]) : fallback;
  };
  fiar::test::FakePlatform machine;
  machine.resources.loadRealOnes = true;
  machine.random.afterwards = 0.5;
  fiar::Toolkit toolkit(machine.platform);
  fiar::mainFrm window(toolkit);
  window.form.Load();
  window.Combo1.setListIndex(number(4, 0));
  play(window, static_cast<unsigned>(number(2, 1)), number(3, 12));
  window.drawutezi();
  window.hiliteNextMove();

  const int side = number(5, 996);
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(side) * static_cast<std::size_t>(side));
  const BitmapView image{pixels.data(), side, side, side};
  const fiar::PaintScale scale{side / window.boardPic.Width, side / 664.0};
  fiar::paint(window.boardPic.drawing(), window.boardPic.BackColor, scale, image, drawDigits);
  writeImage(arguments[1], image);
  return 0;
}

}  // namespace

int main(int count, char** values) {
  try {
    return run({values, static_cast<std::size_t>(count)});
  } catch (const std::exception& error) {
    std::cerr << "board_image: " << error.what() << '\n';
    return 1;
  }
}
