# Cross toolchain: 64-bit Windows with mingw-w64 (posix threads).
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(TOOL_PREFIX x86_64-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
