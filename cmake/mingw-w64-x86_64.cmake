# Cross-building for 64-bit Windows with Debian's mingw-w64 (posix threads, so
# that the C++ thread library is complete). GLYPHWRIGHT_MINGW_PREFIXES lists the
# folders the bundled libraries were installed into (scripts/windows.sh).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(triple x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triple}-g++-posix)
set(CMAKE_RC_COMPILER ${triple}-windres)
set(CMAKE_AR ${triple}-gcc-ar-posix CACHE FILEPATH "")
set(CMAKE_RANLIB ${triple}-gcc-ranlib-posix CACHE FILEPATH "")

list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES GLYPHWRIGHT_MINGW_PREFIXES)
set(CMAKE_FIND_ROOT_PATH /usr/${triple} ${GLYPHWRIGHT_MINGW_PREFIXES})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# Static archives only: the program is one .exe that needs no DLL beside it.
set(CMAKE_FIND_LIBRARY_SUFFIXES .a)
# Debian's mingw zlib comes with an import library for its DLL as well.
set(ZLIB_USE_STATIC_LIBS ON)
set(ZLIB_LIBRARY /usr/${triple}/lib/libz.a CACHE FILEPATH "zlib, linked statically")
