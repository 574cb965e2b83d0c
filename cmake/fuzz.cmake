# Fuzz targets (clang only): every fuzz/<name>.cpp becomes the libFuzzer
# program fuzz_<name>, built with the address and undefined-behaviour
# sanitizers over the text routines of fk_text. A new target is one new file
# in fuzz/ (and, if wanted, seeds in fuzz/corpus/<name>/). scripts/fuzz.sh
# configures build/fuzz with -DFK_FUZZ=ON and runs them.
option(FK_FUZZ "Build the libFuzzer targets of fuzz/ (needs clang)" OFF)

if(FK_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "FK_FUZZ needs clang (CXX=clang++), not ${CMAKE_CXX_COMPILER_ID}")
  endif()
  # Any undefined behaviour stops the run, so the fuzzer keeps the input.
  set(FK_FUZZ_FLAGS -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -g)
  target_compile_options(fk_text PUBLIC ${FK_FUZZ_FLAGS} -fsanitize=fuzzer-no-link)
  target_link_options(fk_text PUBLIC -fsanitize=address,undefined)

  file(GLOB FK_FUZZ_SOURCES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/fuzz/*.cpp)
  add_custom_target(fuzz_targets)
  foreach(source ${FK_FUZZ_SOURCES})
    get_filename_component(name ${source} NAME_WE)
    add_executable(fuzz_${name} ${source})
    target_include_directories(fuzz_${name} PRIVATE ${CMAKE_SOURCE_DIR}/fuzz)
    target_compile_options(fuzz_${name} PRIVATE -Wall -Wextra)
    target_link_libraries(fuzz_${name} PRIVATE fk_text)
    target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
    set_target_properties(fuzz_${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/fuzz)
    add_dependencies(fuzz_targets fuzz_${name})
  endforeach()
endif()

# The native tests stop at the first undefined behaviour as the fuzz targets
# do, so that the regression cases of fuzzing findings fail instead of only
# printing a report.
if(FK_SANITIZE)
  target_compile_options(fk_text PUBLIC -fno-sanitize-recover=all)
endif()
