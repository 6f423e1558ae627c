# Toolchain file: a 64-bit Windows program, cross-compiled by MinGW-w64 and tried with Wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(triple x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triple}-g++-posix)
set(CMAKE_RC_COMPILER ${triple}-windres)
set(CMAKE_CROSSCOMPILING_EMULATOR /usr/lib/wine/wine64)

# Libraries come from the folders that MAPWRIGHT_WINDOWS_LIBRARIES lists, programs from this machine.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES MAPWRIGHT_WINDOWS_LIBRARIES)
set(CMAKE_FIND_ROOT_PATH /usr/${triple} ${MAPWRIGHT_WINDOWS_LIBRARIES})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
