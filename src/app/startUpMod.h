#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "platform/platform.h"
#include "toolkit/toolkit.h"

namespace fiar::startUpMod {

/// How the program runs.
enum class RunMode : std::int16_t { Unknown = 0, Built = 2, InDevelopment = 3 };

/// What start-up sets for the whole run. The game reads none of it; the toolkit's other users do.
struct ProgramValues {
  RunMode runMode = RunMode::Unknown;
  Text configText;  ///< the configuration as tagged text; empty where the program carries none
  Text workKey;     ///< in hexadecimal digits; never to be shown, written or logged
  Text clipsPath;
  bool useDatabase = false;
  Text queryText;
  std::vector<DatabaseQuery> queries;  ///< the connection's pool; empty where the database is off
};

/// Starts the program: prepares the toolkit, reads the configuration, and then shows the window. Shows no
/// message. What `showMainFrm` throws is passed on.
/// \param values receives the program-wide values, all of them before `showMainFrm` is called.
/// \param showMainFrm loads the main window, shows it and returns while it is open.
void Main(Toolkit& toolkit, ProgramValues& values, const std::function<void()>& showMainFrm);

/// Sets the toolkit's folders, its line break and the start time.
void setupPaths(Toolkit& toolkit, RunMode runMode);

/// Prepares the pool of queries and opens the connection that the configuration describes. A failure leaves
/// the program without a connection and is not reported.
void connectDatabase(Toolkit& toolkit, ProgramValues& values);

}  // namespace fiar::startUpMod
