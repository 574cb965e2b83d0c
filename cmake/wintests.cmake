# GoogleTest built with the cross toolchain; tests run under Wine with a
# private prefix in the build tree.
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
set(gtest_disable_pthreads OFF CACHE BOOL "" FORCE)
add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)

set(FK_WINEPREFIX ${CMAKE_BINARY_DIR}/wineprefix)
set(FK_WINE_ENV
  "WINEPREFIX=${FK_WINEPREFIX}"
  "WINEDLLOVERRIDES=mscoree,mshtml="
  "WINEDEBUG=-all"
  "FK_SOURCE_DIR=${CMAKE_SOURCE_DIR}"
)
# The 64-bit tree's prefix is a win64 one, which runs 32-bit programs too.
if(FK_BITS EQUAL 64)
  list(APPEND FK_WINE_ENV "WINEARCH=win64")
endif()

# Support code shared by the tests (message box watcher, window helpers).
file(GLOB FK_TEST_SUPPORT CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/support/*.cpp)
add_library(fk_testsupport STATIC ${FK_TEST_SUPPORT})
target_include_directories(fk_testsupport PUBLIC ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/include)
target_link_libraries(fk_testsupport PUBLIC gtest user32 gdi32)

# The prefix is made once; every Wine test depends on it.
add_test(NAME wine_prefix COMMAND ${CMAKE_COMMAND} -E env ${FK_WINE_ENV} sh ${CMAKE_SOURCE_DIR}/cmake/wineprefix.sh)
set_tests_properties(wine_prefix PROPERTIES FIXTURES_SETUP wine TIMEOUT 600)

# fk_wine_test(name sources...): one test program, one CTest test.
function(fk_wine_test name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE fk_testsupport fldkit gtest_main)
  target_link_options(${name} PRIVATE ${FK_STATIC_RUNTIME})
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES
    ENVIRONMENT "${FK_WINE_ENV}"
    FIXTURES_REQUIRED wine
    TIMEOUT 300)
endfunction()

# Text routines, built into the test from the same sources as the DLL.
file(GLOB FK_TEXT_TESTS CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/text/*.cpp)
if(FK_TEXT_TESTS)
  fk_wine_test(text_tests ${FK_TEXT_TESTS})
  target_link_libraries(text_tests PRIVATE fk_text)
endif()

# One program per subsystem folder of tests/win.
file(GLOB FK_WIN_TEST_DIRS LIST_DIRECTORIES true ${CMAKE_SOURCE_DIR}/tests/win/*)
foreach(dir ${FK_WIN_TEST_DIRS})
  if(IS_DIRECTORY ${dir})
    get_filename_component(sub ${dir} NAME)
    file(GLOB srcs CONFIGURE_DEPENDS ${dir}/*.cpp ${dir}/*.rc)
    fk_wine_test(${sub}_tests ${srcs})
  endif()
endforeach()

# The version resource is read back with the system's version API.
target_link_libraries(frame_tests PRIVATE version)
target_compile_definitions(frame_tests PRIVATE FK_PROJECT_VERSION="${PROJECT_VERSION}")

# The soak takes minutes on a loaded machine; it is bounded all the same.
if(TEST soak_tests)
  set_tests_properties(soak_tests PROPERTIES TIMEOUT 900)
endif()

# The DLL imports only system DLLs (the runtime is linked statically).
add_test(NAME dll_imports_system_only
  COMMAND ${CMAKE_COMMAND} -DDLL=$<TARGET_FILE:${FK_LIB}> -DOBJDUMP=${TOOL_PREFIX}-objdump
          -P ${CMAKE_SOURCE_DIR}/cmake/check_imports.cmake)
set_tests_properties(dll_imports_system_only PROPERTIES TIMEOUT 60)

# No pointer or handle squeezed through a 32-bit integer in a way the
# compilers let pass (explicit double casts, pointers from 32-bit window
# words). The sources are the same for both trees: the 64-bit one checks.
if(FK_BITS EQUAL 64)
  add_test(NAME pointer_casts COMMAND ${CMAKE_COMMAND} -DSOURCE=${CMAKE_SOURCE_DIR}
           -P ${CMAKE_SOURCE_DIR}/cmake/check_pointer_casts.cmake)
  set_tests_properties(pointer_casts PROPERTIES TIMEOUT 60)
endif()

# The demo form runs its script to the end: a dialog from a template with
# every entry field, filled, validated and read back.
add_test(NAME demo_form COMMAND fkdemo --auto)
set_tests_properties(demo_form PROPERTIES
  ENVIRONMENT "${FK_WINE_ENV}"
  FIXTURES_REQUIRED wine
  TIMEOUT 300
  PASS_REGULAR_EXPRESSION "Validation: 1 field\\(s\\) refused"
  FAIL_REGULAR_EXPRESSION "could not be created|gave no class list|picture missing")

# An application author's build: the header in every language level, links
# through fldkit32.lib (fldkit64.lib), the CMake package and pkg-config,
# against an install.
if(FK_BITS EQUAL 64)
  set(FK_OTHER_TOOLCHAIN ${CMAKE_SOURCE_DIR}/cmake/mingw-i686.cmake)
else()
  set(FK_OTHER_TOOLCHAIN ${CMAKE_SOURCE_DIR}/cmake/mingw-x86_64.cmake)
endif()
foreach(mode header msvc cmake pkgconfig)
  add_test(NAME consumer_${mode}
    COMMAND ${CMAKE_COMMAND} -E env ${FK_WINE_ENV}
            ${CMAKE_COMMAND} -DMODE=${mode} -DBUILD=${CMAKE_BINARY_DIR} -DSOURCE=${CMAKE_SOURCE_DIR}
            -DTOOLCHAIN=${CMAKE_TOOLCHAIN_FILE} -DCC=${CMAKE_C_COMPILER} -DBITS=${FK_BITS}
            -DOTHER_TOOLCHAIN=${FK_OTHER_TOOLCHAIN} -P ${CMAKE_SOURCE_DIR}/cmake/consumer_test.cmake)
  set_tests_properties(consumer_${mode} PROPERTIES FIXTURES_REQUIRED wine TIMEOUT 300)
endforeach()

# The assistive client of the accessibility tests reads through oleacc.
# So does the soak's screen-reader step.
foreach(reader access_tests soak_tests)
  if(TARGET ${reader})
    target_link_libraries(${reader} PRIVATE oleacc ole32 oleaut32 uuid)
  endif()
endforeach()

# What needs both DLLs: a 32-bit and a 64-bit program linked over DDE both
# ways, and the demo drawn alike by both. The program of the DDE test is
# built in both trees (each is the other's partner); the 32-bit tree runs
# both tests against the 64-bit tree (FK_OTHER_BUILD), skipping them until
# that tree is built.
add_executable(cross_dde ${CMAKE_SOURCE_DIR}/tests/cross/cross_dde.cpp)
target_link_libraries(cross_dde PRIVATE fk_testsupport fldkit gtest)
target_link_options(cross_dde PRIVATE ${FK_STATIC_RUNTIME})
if(FK_BITS EQUAL 32 AND FK_OTHER_BUILD)
  add_test(NAME cross_dde COMMAND cross_dde)
  set_tests_properties(cross_dde PROPERTIES
    ENVIRONMENT "${FK_WINE_ENV};FK_PEER_EXE=Z:${FK_OTHER_BUILD}/bin/cross_dde.exe"
    FIXTURES_REQUIRED wine
    SKIP_RETURN_CODE 77
    TIMEOUT 300)
  add_test(NAME demo_same_picture
    COMMAND ${CMAKE_COMMAND} -E env ${FK_WINE_ENV}
            ${CMAKE_COMMAND} -DDEMO32=$<TARGET_FILE:fkdemo> -DDEMO64=${FK_OTHER_BUILD}/bin/fkdemo64.exe
            -DWORK=${CMAKE_BINARY_DIR}/demo_compare -DCOMPARE=${CMAKE_SOURCE_DIR}/tests/cross/compare_bmp.py
            -P ${CMAKE_SOURCE_DIR}/cmake/demo_compare.cmake)
  set_tests_properties(demo_same_picture PROPERTIES
    FIXTURES_REQUIRED wine
    SKIP_REGULAR_EXPRESSION "no 64-bit demo at"
    TIMEOUT 300)
endif()
