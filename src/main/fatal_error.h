#pragma once

#include <string>

namespace fiar::win32 {

/// Tells the user in a message box why the program ends, and returns when it has been read.
/// \param reason in UTF-8.
void showFatalError(const std::string& reason) noexcept;

/// From now on a call of std::terminate and a fault of the processor too show a message box and end the
/// program with exit code 1.
void reportFatalErrors();

}  // namespace fiar::win32
