# What an application author does with the library, run as one test each:
#   MODE=header     the public header compiled strictly in C89, C99, C17 and
#                   C++20 with mingw-w64's gcc and with clang
#   MODE=msvc       a program linked by lld-link against fldkit32.lib
#                   (fldkit64.lib)
#   MODE=cmake      a project that finds the installed CMake package; a
#                   project of the other bitness is refused with a clear
#                   message by an install without its DLL
#   MODE=pkgconfig  a program built with the flags pkg-config gives
# The last three run their program under Wine. Arguments: MODE, BUILD (the
# build tree), SOURCE (the source tree), TOOLCHAIN, CC (mingw-w64's gcc),
# BITS (32 or 64), OTHER_TOOLCHAIN (the other bitness's toolchain file).
cmake_minimum_required(VERSION 3.20)
set(work ${BUILD}/consumer/${MODE})
if(BITS EQUAL 64)
  set(mingw_target x86_64-w64-mingw32)
  set(msvc_target x86_64-pc-windows-msvc)
  set(lld_machine /machine:x64)
  set(other_bits 32)
else()
  set(mingw_target i686-w64-mingw32)
  set(msvc_target i686-pc-windows-msvc)
  set(lld_machine /machine:x86 /safeseh:no)
  set(other_bits 64)
endif()
file(REMOVE_RECURSE ${work})
file(MAKE_DIRECTORY ${work})

function(run)
  execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${work} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    string(REPLACE ";" " " line "${ARGN}")
    message(FATAL_ERROR "${line}\n  exit ${rc}\n${out}${err}")
  endif()
  set(run_output "${out}" PARENT_SCOPE)
endfunction()

function(run_under_wine exe)
  run(wine ${exe})
  message(STATUS "${exe}: ${run_output}")
endfunction()

set(prefix ${work}/prefix)
if(NOT MODE STREQUAL "header")
  run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${prefix})
endif()

if(MODE STREQUAL "header")
  set(flags -Wall -Wextra -pedantic -Werror -I${SOURCE}/include -c ${SOURCE}/tests/consumer/header_check.c)
  foreach(compiler ${CC} "clang;--target=${mingw_target}")
    foreach(std c89 c99 c17)
      run(${compiler} -std=${std} ${flags} -o ${work}/h.o)
    endforeach()
    run(${compiler} -x c++ -std=c++20 ${flags} -o ${work}/h.o)
  endforeach()
  message(STATUS "fldkit.h: C89, C99, C17, C++20 with ${CC} and clang (${mingw_target}), no warning")
elseif(MODE STREQUAL "msvc")
  execute_process(COMMAND ${CC} -print-file-name=libkernel32.a OUTPUT_VARIABLE kernel32 OUTPUT_STRIP_TRAILING_WHITESPACE)
  run(clang --target=${msvc_target} -std=c99 -Wall -Wextra -pedantic -Werror -c
      ${SOURCE}/tests/consumer/msvc_link.c -o ${work}/msvc_link.obj)
  run(lld-link /nologo ${lld_machine} /nodefaultlib /entry:start /subsystem:console /out:${work}/msvc_link.exe
      ${work}/msvc_link.obj ${prefix}/lib/fldkit${BITS}.lib ${kernel32})
  file(COPY ${prefix}/bin/FLDKIT${BITS}.dll DESTINATION ${work})
  run_under_wine(${work}/msvc_link.exe)
elseif(MODE STREQUAL "cmake")
  run(${CMAKE_COMMAND} -S ${SOURCE}/tests/consumer/app -B ${work}/app -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN}
      -DCMAKE_PREFIX_PATH=${prefix})
  run(${CMAKE_COMMAND} --build ${work}/app)
  run_under_wine(${work}/app/consumer.exe)
  # This install holds one DLL: a project of the other bitness is told so.
  execute_process(COMMAND ${CMAKE_COMMAND} -S ${SOURCE}/tests/consumer/app -B ${work}/other
                          -DCMAKE_TOOLCHAIN_FILE=${OTHER_TOOLCHAIN} -DCMAKE_PREFIX_PATH=${prefix}
                  RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(rc EQUAL 0 OR NOT "${out}${err}" MATCHES "has[ \n]+no[ \n]+FLDKIT${other_bits}.dll")
    message(FATAL_ERROR "a ${other_bits}-bit project against a ${BITS}-bit install: exit ${rc}\n${out}${err}")
  endif()
  message(STATUS "a ${other_bits}-bit project is refused: has no FLDKIT${other_bits}.dll")
elseif(MODE STREQUAL "pkgconfig")
  set(ENV{PKG_CONFIG_LIBDIR} ${prefix}/lib/pkgconfig)
  if(BITS EQUAL 64)
    run(pkg-config --cflags --libs fieldkit64)
  else()
    run(pkg-config --cflags --libs fieldkit)
  endif()
  string(STRIP "${run_output}" pc)
  separate_arguments(pc UNIX_COMMAND "${pc}")
  run(${CC} ${SOURCE}/tests/consumer/app/main.c ${pc} -o ${work}/consumer.exe)
  file(COPY ${prefix}/bin/FLDKIT${BITS}.dll DESTINATION ${work})
  run_under_wine(${work}/consumer.exe)
else()
  message(FATAL_ERROR "MODE must be header, msvc, cmake or pkgconfig")
endif()
