#pragma once

#include <windows.h>
// After <windows.h>, whose types it uses.
#include <objbase.h>

#include <memory>

#include "win32/error.h"

namespace fiar::win32 {

struct ComRelease {
  void operator()(IUnknown* object) const { object->Release(); }
};

/// Owns one reference to an object of the system.
template <class Interface>
using ComPointer = std::unique_ptr<Interface, ComRelease>;

/// Lets this thread use the system's objects for as long as it exists. None may be left at its end.
class ComApartment {
public:
  ComApartment() {
    const HRESULT result = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE);
    if (FAILED(result)) throw Error("CoInitializeEx", static_cast<DWORD>(result));
  }
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;
  ~ComApartment() { CoUninitialize(); }
};

}  // namespace fiar::win32
