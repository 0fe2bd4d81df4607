// Windows to measure the game's window against: window_bench.exe bare | full
//
//   bare   an empty window with a timer of 5 ms that does nothing
//   full   the game's window with a full board

#include <windows.h>

#include <string_view>

#include "app/mainFrm.h"
#include "win32/services/services.h"
#include "win32/window/com.h"
#include "win32/window/form_window.h"
#include "win32/window/standard_controls.h"

namespace fiar::win32 {
namespace {

LRESULT CALLBACK bareProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_TIMER) return 0;
  if (message == WM_DESTROY) PostQuitMessage(0);
  return DefWindowProcW(window, message, wParam, lParam);
}

int showBareWindow() {
  WNDCLASSW kind{};
  kind.lpfnWndProc = bareProcedure;
  kind.lpszClassName = L"bare";
  kind.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
  RegisterClassW(&kind);
  HWND window = CreateWindowW(L"bare", L"Bare window", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100, 820, 720,
                              nullptr, nullptr, nullptr, nullptr);
  SetTimer(window, 1, 5, nullptr);
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  return 0;
}

/// Stones of both sides, no five of one in a line.
void fillBoard(Board& board) {
  for (int column = 0; column < board.columns(); ++column) {
    for (int row = 0; row < board.rows(); ++row) {
      board.board(column, row) = (column + row / 2) % 2 == 0 ? kHuman : kComputer;
    }
  }
}

int showFullBoard() {
  const ComApartment apartment;
  useVisualStyles();
  Win32Services services;
  Toolkit toolkit(services.platform);
  mainFrm mainWindow(toolkit);
  FormWindow window(mainWindow.form, services.resources);
  mainWindow.Combo1.setListIndex(3);
  window.show(SW_SHOWNORMAL);
  fillBoard(mainWindow.game);
  mainWindow.game.player = kHuman;
  const int exitCode = services.events.runUntilQuit();
  window.rethrowFailure();
  return exitCode;
}

}  // namespace
}  // namespace fiar::win32

int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR lpCmdLine, int /*showCommand*/) {
  const std::string_view what(lpCmdLine);
  if (what == "bare") return fiar::win32::showBareWindow();
  if (what == "full") return fiar::win32::showFullBoard();
  return EXIT_FAILURE;
}
