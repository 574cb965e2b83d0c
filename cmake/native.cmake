# Native build: the text routines and their tests (and later fuzz targets).
find_package(GTest REQUIRED)
find_package(Threads REQUIRED)

option(FK_SANITIZE "Build the native tests with address and undefined-behaviour sanitizers" ON)
if(FK_SANITIZE)
  target_compile_options(fk_text PUBLIC -fsanitize=address,undefined -fno-omit-frame-pointer)
  target_link_options(fk_text PUBLIC -fsanitize=address,undefined)
endif()

file(GLOB FK_TEXT_TESTS CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/text/*.cpp)
add_executable(text_tests ${FK_TEXT_TESTS})
target_link_libraries(text_tests PRIVATE fk_text GTest::gtest GTest::gtest_main Threads::Threads)
add_test(NAME native_text COMMAND text_tests)
set_tests_properties(native_text PROPERTIES TIMEOUT 120)
include(${CMAKE_SOURCE_DIR}/cmake/fuzz.cmake)

# The text routines' benchmark (Google Benchmark), built without sanitizers.
find_package(benchmark QUIET)
if(benchmark_FOUND)
  get_target_property(FK_TEXT_BENCH_SRCS fk_text SOURCES)
  add_library(fk_text_plain STATIC ${FK_TEXT_BENCH_SRCS})
  target_include_directories(fk_text_plain PUBLIC ${CMAKE_SOURCE_DIR})
  add_executable(text_bench ${CMAKE_SOURCE_DIR}/bench/text/text_bench.cpp)
  target_compile_options(text_bench PRIVATE -O2)
  target_compile_options(fk_text_plain PRIVATE -O2)
  target_link_libraries(text_bench PRIVATE fk_text_plain benchmark::benchmark)
endif()
