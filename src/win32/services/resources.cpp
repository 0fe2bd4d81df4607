#include "win32/error.h"
#include "win32/services/services.h"
#include "win32/wide_text.h"

namespace fiar::win32 {
namespace {

// The system compares types and names without regard to letter case.
constexpr const wchar_t* kResourceType = L"CUSTOM";

std::optional<std::string> read(const wchar_t* name) {
  // Resources are part of the mapped program: there is nothing to release.
  const HRSRC found = FindResourceW(nullptr, name, kResourceType);
  if (found == nullptr) return std::nullopt;
  const HGLOBAL loaded = require(LoadResource(nullptr, found), "LoadResource");
  const void* const bytes = require(LockResource(loaded), "LockResource");
  return std::string(static_cast<const char*>(bytes), SizeofResource(nullptr, found));
}

}  // namespace

std::optional<std::string> Win32Resources::custom(unsigned number) const {
  // The system takes a number in the place of the name; it has 16 bits, and 0 is none.
  if (number == 0 || number > 0xFFFF) return std::nullopt;
  return read(MAKEINTRESOURCEW(number));
}

std::optional<std::string> Win32Resources::custom(TextView name) const {
  return read(toWide(name).c_str());
}

}  // namespace fiar::win32
