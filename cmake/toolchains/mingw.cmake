# What both widths share: the compilers with the threads of C++, everything linked into the product itself, and Wine.
set(CMAKE_C_COMPILER ${ZENTARO_MINGW}-gcc-posix)
set(CMAKE_CXX_COMPILER ${ZENTARO_MINGW}-g++-posix)
set(CMAKE_RC_COMPILER ${ZENTARO_MINGW}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${ZENTARO_MINGW})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
foreach(kind LIBRARY INCLUDE PACKAGE)
  set(CMAKE_FIND_ROOT_PATH_MODE_${kind} ONLY)
endforeach()

# Nothing of the compiler's own is a file beside the product.
foreach(kind EXE SHARED)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-static -Wl,--gc-sections")
endforeach()
set(CMAKE_CXX_FLAGS_INIT "${ZENTARO_FLAGS} -ffunction-sections -fdata-sections")

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../../scripts/wine)
