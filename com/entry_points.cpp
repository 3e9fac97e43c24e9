// The four entry points of an in-process automation server, and the start and end of the module.
#include "com/class_factory.h"
#include "com/errors.h"
#include "com/registration.h"
#include "com/server.h"
#include "platform/windows/thread_end.h"

using namespace zentaro;

extern "C" {

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, void* reserved) {
  if (reason == DLL_PROCESS_ATTACH) com::setServerModule(module);
  // At the end of the process itself, `reserved` is not null and there is nothing left to do.
  if (reason == DLL_PROCESS_DETACH && reserved == nullptr) windows::releaseThreadEnds();
  return TRUE;
}

HRESULT STDMETHODCALLTYPE DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** result) {
  return com::getClassObject(classId, interfaceId, result);
}

HRESULT STDMETHODCALLTYPE DllCanUnloadNow() {
  return com::isServerUsed() || com::isServerLocked() ? S_FALSE : S_OK;
}

HRESULT STDMETHODCALLTYPE DllRegisterServer() {
  return com::guarded([] { return com::registerServer(com::possibleAudience()); });
}

HRESULT STDMETHODCALLTYPE DllUnregisterServer() {
  return com::guarded([] {
    // What a user without rights registered before goes too.
    const HRESULT own = com::unregisterServer(com::Audience::CurrentUser);
    if (com::possibleAudience() == com::Audience::CurrentUser) return own;
    return com::unregisterServer(com::Audience::AllUsers);
  });
}

}  // extern "C"
