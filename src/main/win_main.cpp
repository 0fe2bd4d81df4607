// Where the program starts: makes the machine's services and the window, and runs until the window is closed.

#include <windows.h>

#include <optional>

#include "app/mainFrm.h"
#include "app/startUpMod.h"
#include "main/fatal_error.h"
#include "platform/mersenne_twister.h"
#include "win32/services/events.h"
#include "win32/services/resources.h"
#include "win32/services/socket.h"
#include "win32/services/sound.h"
#include "win32/window/com.h"
#include "win32/window/form_window.h"
#include "win32/window/standard_controls.h"

namespace fiar::win32 {
namespace {

int run(int showCommand) {
  const ComApartment apartment;
  useVisualStyles();

  const Win32Resources resources;
  MersenneTwister random;
  Win32SoundPlayer sound;
  RecordedDatabase database;
  Win32Events events;
  const Platform platform{systemClock(),
                          CodePage::system(),
                          systemRegionalFormat(),
                          systemEnvironment(),
                          resources,
                          random,
                          sound,
                          events,
                          database,
                          [] { return std::make_unique<Win32Socket>(); }};

  Toolkit toolkit(platform);
  mainFrm mainWindow(toolkit);
  std::optional<FormWindow> window;
  startUpMod::ProgramValues values;
  startUpMod::Main(toolkit, values, [&] {
    window.emplace(mainWindow.form, resources);
    window->show(showCommand);
  });
  const int exitCode = events.runUntilQuit();
  window->rethrowFailure();
  return exitCode;
}

}  // namespace
}  // namespace fiar::win32

int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR /*commandLine*/, int nShowCmd) {
  SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
  fiar::win32::reportFatalErrors();
  try {
    return fiar::win32::run(nShowCmd);
  } catch (const std::exception& error) {
    fiar::win32::showFatalError(error.what());
  } catch (...) {
    fiar::win32::showFatalError("an unknown error");
  }
  return EXIT_FAILURE;
}
