# Cross build for Windows: FLDKIT32.dll with the i686 toolchain, FLDKIT64.dll
# with the x86-64 one, from the same sources; its import libraries, the
# sample program and the tests that run under Wine.

set(FK_STATIC_RUNTIME -static -static-libgcc -static-libstdc++)
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(FK_BITS 64)
  set(FK_LLVM_MACHINE i386:x86-64)
else()
  set(FK_BITS 32)
  set(FK_LLVM_MACHINE i386)
endif()
set(FK_DLL_NAME FLDKIT${FK_BITS})       # module name, FLDKIT32 or FLDKIT64
set(FK_LIB fldkit${FK_BITS})            # target and import-library name
set(FK_ARCH_NAME win${FK_BITS})
# The export list is written once, with the stdcall decorations of 32-bit
# code; 64-bit code has one calling convention and no decorations, so the
# 64-bit list is the same one with them taken off.
if(FK_BITS EQUAL 32)
  set(FK_DEF ${CMAKE_SOURCE_DIR}/frame/fldkit32.def)
else()
  set(FK_DEF ${CMAKE_BINARY_DIR}/fldkit64.def)
  file(READ ${CMAKE_SOURCE_DIR}/frame/fldkit32.def fk_def_text)
  string(REGEX REPLACE "([A-Za-z_][A-Za-z_0-9]*)@[0-9]+" "\\1" fk_def_text "${fk_def_text}")
  string(REGEX REPLACE "^(;[^\n]*\n)+" "" fk_def_text "${fk_def_text}")
  string(REPLACE "FLDKIT32.dll" "FLDKIT64.dll" fk_def_text "${fk_def_text}")
  file(GENERATE OUTPUT ${FK_DEF} CONTENT
       "; Exports of FLDKIT64.dll, made from fldkit32.def without the stdcall\n; decorations: 64-bit code has one calling convention.\n${fk_def_text}")
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/frame/fldkit32.def)
endif()
# A pointer or handle squeezed through an integer of another size is an
# error in both builds (in the 64-bit one it would lose the upper half; C++
# refuses a narrowing pointer cast by itself, C is told to).
set(FK_POINTER_ERRORS -Werror=int-to-pointer-cast
    $<$<COMPILE_LANGUAGE:C>:-Werror=pointer-to-int-cast -Werror=int-conversion>)

target_compile_options(fk_text PRIVATE -Wall -Wextra)

# The library's sources by subsystem; every .cpp below these folders belongs to
# the DLL.
file(GLOB FK_DLL_SOURCES CONFIGURE_DEPENDS
  ${CMAKE_SOURCE_DIR}/frame/*.cpp
  ${CMAKE_SOURCE_DIR}/fields/*.cpp
  ${CMAKE_SOURCE_DIR}/validate/*.cpp
  ${CMAKE_SOURCE_DIR}/tables/*.cpp
  ${CMAKE_SOURCE_DIR}/links/*.cpp
  ${CMAKE_SOURCE_DIR}/display/*.cpp
  ${CMAKE_SOURCE_DIR}/design/*.cpp
  ${CMAKE_SOURCE_DIR}/access/*.cpp
)
# The pure routines come in through fk_text, whatever folder they live in.
get_target_property(FK_TEXT_SRCS fk_text SOURCES)
foreach(src ${FK_TEXT_SRCS})
  get_filename_component(abs ${src} ABSOLUTE BASE_DIR ${CMAKE_SOURCE_DIR})
  list(REMOVE_ITEM FK_DLL_SOURCES ${abs})
endforeach()
file(GLOB FK_DLL_RESOURCES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/resources/*.rc)

# The version resource: file and product version from the project's version.
configure_file(${CMAKE_SOURCE_DIR}/cmake/package/version.rc.in ${CMAKE_BINARY_DIR}/fldkit_version.rc @ONLY)

add_library(${FK_LIB} SHARED ${FK_DLL_SOURCES} ${FK_DLL_RESOURCES} ${CMAKE_BINARY_DIR}/fldkit_version.rc ${FK_DEF})
set_target_properties(${FK_LIB} PROPERTIES
  OUTPUT_NAME ${FK_DLL_NAME}
  PREFIX ""
  SUFFIX ".dll"
)
target_include_directories(${FK_LIB} PRIVATE ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/include)
target_compile_options(${FK_LIB} PRIVATE -Wall -Wextra ${FK_POINTER_ERRORS})
target_compile_options(fk_text PRIVATE ${FK_POINTER_ERRORS})
# fk_text is linked whole so that every exported text routine is in the DLL.
target_link_libraries(${FK_LIB} PRIVATE
  -Wl,--whole-archive fk_text -Wl,--no-whole-archive
  user32 gdi32 kernel32 shell32 winmm advapi32 oleacc ole32 oleaut32 uuid)
# Plain (undecorated) export names; the .def lists them with decorations.
target_link_options(${FK_LIB} PRIVATE -Wl,--kill-at ${FK_STATIC_RUNTIME})

# One definition of every name across the whole library: the same sources,
# text routines included, built and linked with link-time optimisation, which
# sees every translation unit at once and turns what -Wodr finds into errors.
# Not part of the ordinary build; the odr_lto test builds it.
set(FK_ODR_SOURCES ${FK_DLL_SOURCES})
foreach(src ${FK_TEXT_SRCS})
  get_filename_component(abs ${src} ABSOLUTE BASE_DIR ${CMAKE_SOURCE_DIR})
  list(APPEND FK_ODR_SOURCES ${abs})
endforeach()
set(FK_ODR_FLAGS -flto -Wodr -Werror=odr -Wlto-type-mismatch -Werror=lto-type-mismatch)
add_library(fldkit_odr SHARED EXCLUDE_FROM_ALL ${FK_ODR_SOURCES} ${FK_DEF})
set_target_properties(fldkit_odr PROPERTIES
  OUTPUT_NAME ${FK_DLL_NAME}
  PREFIX ""
  SUFFIX ".dll"
  RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/odr
  LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/odr
  ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/odr)
target_include_directories(fldkit_odr PRIVATE ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/include)
target_compile_options(fldkit_odr PRIVATE ${FK_ODR_FLAGS})
target_link_libraries(fldkit_odr PRIVATE user32 gdi32 kernel32 shell32 winmm advapi32 oleacc ole32 oleaut32 uuid)
target_link_options(fldkit_odr PRIVATE ${FK_ODR_FLAGS} -Wl,--kill-at ${FK_STATIC_RUNTIME})
# One bitness is enough (the sources are the same): the 32-bit tree runs it.
if(FK_BITS EQUAL 32)
  add_test(NAME odr_lto COMMAND ${CMAKE_COMMAND} --build ${CMAKE_BINARY_DIR} --target fldkit_odr --parallel 2)
  set_tests_properties(odr_lto PROPERTIES TIMEOUT 1200)
endif()

# Import library: 32-bit callers link by the decorated stdcall names, 64-bit
# ones by the plain names.
set(FK_IMPLIB ${CMAKE_BINARY_DIR}/lib/lib${FK_LIB}.a)
add_custom_command(
  OUTPUT ${FK_IMPLIB}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/lib
  COMMAND ${CMAKE_DLLTOOL} -d ${FK_DEF} -l ${FK_IMPLIB} -D ${FK_DLL_NAME}.dll -k
  DEPENDS ${FK_DEF}
  COMMENT "Import library lib${FK_LIB}.a"
)
# The same in Microsoft's format, for link.exe and lld-link.
find_program(FK_LLVM_DLLTOOL NAMES llvm-dlltool llvm-dlltool-14 REQUIRED)
set(FK_MSVC_IMPLIB ${CMAKE_BINARY_DIR}/lib/${FK_LIB}.lib)
add_custom_command(
  OUTPUT ${FK_MSVC_IMPLIB}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/lib
  COMMAND ${FK_LLVM_DLLTOOL} -m ${FK_LLVM_MACHINE} -d ${FK_DEF} -l ${FK_MSVC_IMPLIB} -D ${FK_DLL_NAME}.dll -k
  DEPENDS ${FK_DEF}
  COMMENT "Import library ${FK_LIB}.lib"
)
add_custom_target(fldkit_implib ALL DEPENDS ${FK_IMPLIB} ${FK_MSVC_IMPLIB})
add_library(fldkit INTERFACE)
add_dependencies(fldkit fldkit_implib ${FK_LIB})
target_include_directories(fldkit INTERFACE ${CMAKE_SOURCE_DIR}/include)
target_link_libraries(fldkit INTERFACE ${FK_IMPLIB})

# The main job: the order-entry form (fkdemo64.exe in the 64-bit build, so
# that both install side by side).
add_executable(fkdemo sample/fkdemo.c sample/fkdemo.rc)
if(FK_BITS EQUAL 64)
  set_target_properties(fkdemo PROPERTIES OUTPUT_NAME fkdemo64)
endif()
target_compile_options(fkdemo PRIVATE ${FK_POINTER_ERRORS})
target_include_directories(fkdemo PRIVATE ${CMAKE_SOURCE_DIR}/sample)
target_link_libraries(fkdemo PRIVATE fldkit user32 gdi32)
target_link_options(fkdemo PRIVATE ${FK_STATIC_RUNTIME})

# Install: bin/ (the DLL, the demo), lib/ (both import libraries, the .def,
# the CMake package, pkg-config), include/, share/doc/fieldkit/.
include(CMakePackageConfigHelpers)
set(FK_PACKAGE_DIR ${CMAKE_BINARY_DIR}/package)
configure_file(${CMAKE_SOURCE_DIR}/cmake/package/FieldKitConfig.cmake.in ${FK_PACKAGE_DIR}/FieldKitConfig.cmake @ONLY)
write_basic_package_version_file(${FK_PACKAGE_DIR}/FieldKitConfigVersion.cmake
  VERSION ${PROJECT_VERSION} COMPATIBILITY SameMajorVersion ARCH_INDEPENDENT)
# pkg-config: fieldkit for the 32-bit DLL, fieldkit64 for the 64-bit one.
if(FK_BITS EQUAL 64)
  set(FK_PC_NAME fieldkit64)
else()
  set(FK_PC_NAME fieldkit)
endif()
configure_file(${CMAKE_SOURCE_DIR}/cmake/package/fieldkit.pc.in ${FK_PACKAGE_DIR}/${FK_PC_NAME}.pc @ONLY)
install(TARGETS ${FK_LIB} RUNTIME DESTINATION bin LIBRARY DESTINATION bin)
install(TARGETS fkdemo RUNTIME DESTINATION bin)
install(FILES ${FK_IMPLIB} ${FK_MSVC_IMPLIB} ${FK_DEF} DESTINATION lib)
install(FILES ${CMAKE_SOURCE_DIR}/include/fldkit.h DESTINATION include)
install(FILES ${FK_PACKAGE_DIR}/FieldKitConfig.cmake ${FK_PACKAGE_DIR}/FieldKitConfigVersion.cmake
  DESTINATION lib/cmake/FieldKit)
install(FILES ${FK_PACKAGE_DIR}/${FK_PC_NAME}.pc DESTINATION lib/pkgconfig)
install(FILES ${CMAKE_SOURCE_DIR}/README.md ${CMAKE_SOURCE_DIR}/LICENSE ${CMAKE_SOURCE_DIR}/CHANGELOG.md
  DESTINATION share/doc/fieldkit)

# dist/: that install, laid out afresh, and the versioned archive of it;
# with the other bitness's install beside it when that tree (FK_OTHER_BUILD)
# has been built. The archive is named after what it holds:
# fieldkit-<version>-win32.zip, -win64.zip, or -windows.zip for both.
set(FK_OTHER_BUILD "" CACHE PATH "The build tree of the other bitness (dist/ takes both; cross tests)")
add_custom_target(dist
  COMMAND ${CMAKE_COMMAND} -DTREE=${CMAKE_BINARY_DIR} -DOTHER=${FK_OTHER_BUILD} -DBITS=${FK_BITS}
          -DDIST=${CMAKE_SOURCE_DIR}/dist -DVERSION=${PROJECT_VERSION} -P ${CMAKE_SOURCE_DIR}/cmake/dist.cmake
  DEPENDS ${FK_LIB} fkdemo fldkit_implib
  COMMENT "dist/ and the archive"
)

include(cmake/wintests.cmake)

# Benchmarks: programs that print figures; nothing passes or fails on speed.
# Run them with scripts/bench.sh.
file(GLOB FK_BENCHES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/bench/*.cpp)
foreach(src ${FK_BENCHES})
  get_filename_component(name ${src} NAME_WE)
  add_executable(${name} ${src})
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR})
  target_link_libraries(${name} PRIVATE fldkit user32 gdi32)
  target_link_options(${name} PRIVATE ${FK_STATIC_RUNTIME})
endforeach()

# The design host: loads the DLL as a dialog editor does. CTest's
# design_host runs its script (scripts/design.sh turns its pictures into
# docs/design-*.png).
add_executable(fkdesign tools/fkdesign.cpp)
target_include_directories(fkdesign PRIVATE ${CMAKE_SOURCE_DIR})
target_compile_options(fkdesign PRIVATE -Wall -Wextra)
target_link_libraries(fkdesign PRIVATE user32 gdi32)
target_link_options(fkdesign PRIVATE ${FK_STATIC_RUNTIME})
add_dependencies(fkdesign ${FK_LIB})
add_test(NAME design_host COMMAND fkdesign --auto .)
set_tests_properties(design_host PROPERTIES
  ENVIRONMENT "${FK_WINE_ENV}"
  FIXTURES_REQUIRED wine
  TIMEOUT 120
  PASS_REGULAR_EXPRESSION "after the style dialog"
  FAIL_REGULAR_EXPRESSION "gave no class list")

# The screen-reader transcript: reads a dialog through oleacc from another
# process. The demo runs it at the end of its script (--transcript FILE);
# scripts/demo.sh keeps docs/accessibility.md as it writes it.
add_executable(fkreader tools/fkreader.cpp)
target_compile_options(fkreader PRIVATE -Wall -Wextra ${FK_POINTER_ERRORS})
target_link_libraries(fkreader PRIVATE oleacc ole32 oleaut32 uuid user32)
target_link_options(fkreader PRIVATE ${FK_STATIC_RUNTIME})
# A reader of one bitness reads the windows of both: dist/ takes the 32-bit one.
if(FK_BITS EQUAL 32)
  install(TARGETS fkreader RUNTIME DESTINATION bin)
endif()
add_dependencies(fkdemo fkreader)
add_test(NAME demo_transcript COMMAND fkdemo --auto --transcript transcript.md)
set_tests_properties(demo_transcript PROPERTIES
  ENVIRONMENT "${FK_WINE_ENV}"
  FIXTURES_REQUIRED wine
  TIMEOUT 300
  PASS_REGULAR_EXPRESSION "Screen reader transcript: [1-9][0-9] controls read"
  FAIL_REGULAR_EXPRESSION "could not be started|took too long|no object"
  FIXTURES_SETUP transcript)
# docs/accessibility.md is what the demo's run writes: a change to what a
# screen reader hears is a change to that page (scripts/demo.sh rewrites it).
add_test(NAME accessibility_doc_current
  COMMAND ${CMAKE_COMMAND} -E compare_files --ignore-eol ${CMAKE_BINARY_DIR}/transcript.md
          ${CMAKE_SOURCE_DIR}/docs/accessibility.md)
set_tests_properties(accessibility_doc_current PROPERTIES FIXTURES_REQUIRED transcript TIMEOUT 60)
