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

/// Throws the Error of a call that failed.
inline void requireSuccess(HRESULT result, const char* call) {
  if (FAILED(result)) throw Error(call, static_cast<DWORD>(result));
}

/// Takes the object that a call hands out through its last argument; throws the call's Error when it fails.
template <class Interface, class Call>
ComPointer<Interface> obtain(const char* name, const Call& call) {
  Interface* object = nullptr;
  requireSuccess(call(&object), name);
  return ComPointer<Interface>(object);
}

/// Lets this thread use the system's objects for as long as it exists. None may be left at its end.
class ComApartment {
public:
  ComApartment() {
    requireSuccess(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE),
                   "CoInitializeEx");
  }
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;
  ComApartment(ComApartment&&) = delete;
  ComApartment& operator=(ComApartment&&) = delete;
  ~ComApartment() { CoUninitialize(); }
};

}  // namespace fiar::win32
