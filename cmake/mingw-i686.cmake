# Cross toolchain: 32-bit Windows with mingw-w64 (posix threads).
set(CMAKE_SYSTEM_PROCESSOR i686)
set(TOOL_PREFIX i686-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
