#include "win32/window/accessible_name.h"

#include "win32/wide_text.h"
#include "win32/window/com.h"
// After <windows.h>, whose types it uses; the first one makes the identifiers of the second one's interfaces
// part of this file.
#include <initguid.h>
#include <oleacc.h>

namespace fiar::win32 {

void setAccessibleName(HWND window, TextView name) noexcept {
  IAccPropServices* services = nullptr;
  if (FAILED(CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER, IID_IAccPropServices,
                              reinterpret_cast<void**>(&services)))) {
    return;
  }
  const ComPointer<IAccPropServices> owner(services);
  services->SetHwndPropStr(window, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, PROPID_ACC_NAME,
                           toWide(name).c_str());
  NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, window, OBJID_CLIENT, CHILDID_SELF);
}

}  // namespace fiar::win32
