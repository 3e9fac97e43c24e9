# Windows, 32 bit, by mingw-w64.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(ZENTARO_MINGW i686-w64-mingw32)
# An amount must round alike on every processor, so no x87; and callers align the stack to four bytes only.
set(ZENTARO_FLAGS "-msse2 -mfpmath=sse -mstackrealign")
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
