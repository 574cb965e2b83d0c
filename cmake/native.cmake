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
