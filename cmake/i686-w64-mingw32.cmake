# 32-bit Windows by the cross compiler of Debian's g++-mingw-w64-i686 packages. The runtime is linked in,
# so that the DLL needs none beside it.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_COMPILER i686-w64-mingw32-gcc)
set(CMAKE_CXX_COMPILER i686-w64-mingw32-g++)
set(CMAKE_RC_COMPILER i686-w64-mingw32-windres)
set(CMAKE_FIND_ROOT_PATH /usr/i686-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")

# Hosts of other compilers keep the stack aligned to 4 bytes only. The compiler's default under SSE2, which
# must not be lost.
set(CMAKE_C_FLAGS_INIT "-mstackrealign")
set(CMAKE_CXX_FLAGS_INIT "-mstackrealign")
