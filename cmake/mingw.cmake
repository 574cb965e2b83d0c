# What both mingw-w64 cross toolchains share (posix threads); the toolchain
# files name the processor and the tools' prefix, then include this.
set(CMAKE_SYSTEM_NAME Windows)

set(CMAKE_C_COMPILER   ${TOOL_PREFIX}-gcc-posix)
set(CMAKE_CXX_COMPILER ${TOOL_PREFIX}-g++-posix)
set(CMAKE_RC_COMPILER  ${TOOL_PREFIX}-windres)
set(CMAKE_DLLTOOL      ${TOOL_PREFIX}-dlltool)

set(CMAKE_FIND_ROOT_PATH /usr/${TOOL_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)

# Everything runs under Wine on the build machine.
set(CMAKE_CROSSCOMPILING_EMULATOR wine)
