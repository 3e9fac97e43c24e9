// The end of the DLL where its program unloads it.
#include "platform/windows/system.h"
#include "platform/windows/thread_end.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void* reserved) {
  // At the end of the process itself, `reserved` is not null and there is nothing left to do.
  if (reason == DLL_PROCESS_DETACH && reserved == nullptr) zentaro::windows::releaseThreadEnds();
  return TRUE;
}
