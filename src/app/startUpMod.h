#pragma once

#include <functional>

#include "toolkit/toolkit.h"

namespace fiar::startUpMod {

/// Starts the program: prepares the toolkit with its program-wide values, reads the configuration, and then
/// shows the window. Shows no message. What `showMainFrm` throws is passed on.
/// \param showMainFrm loads the main window, shows it and returns while it is open.
void Main(Toolkit& toolkit, const std::function<void()>& showMainFrm);

/// Sets the toolkit's folders, its line break and the start time; the script folder depends on the run mode.
void setupPaths(Toolkit& toolkit);

/// Prepares the pool of queries and opens the connection that the configuration describes. A failure leaves
/// the program without a connection and is not reported.
void connectDatabase(Toolkit& toolkit);

}  // namespace fiar::startUpMod
