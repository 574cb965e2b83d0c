# Cross build for 32-bit Windows: FLDKIT32.dll, its import library, the
# sample program and the tests that run under Wine.

set(FK_STATIC_RUNTIME -static -static-libgcc -static-libstdc++)
set(FK_DEF ${CMAKE_SOURCE_DIR}/frame/fldkit32.def)

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

add_library(fldkit32 SHARED ${FK_DLL_SOURCES} ${FK_DLL_RESOURCES} ${CMAKE_BINARY_DIR}/fldkit_version.rc ${FK_DEF})
set_target_properties(fldkit32 PROPERTIES
  OUTPUT_NAME FLDKIT32
  PREFIX ""
  SUFFIX ".dll"
)
target_include_directories(fldkit32 PRIVATE ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/include)
target_compile_options(fldkit32 PRIVATE -Wall -Wextra)
# fk_text is linked whole so that every exported text routine is in the DLL.
target_link_libraries(fldkit32 PRIVATE
  -Wl,--whole-archive fk_text -Wl,--no-whole-archive
  user32 gdi32 kernel32 shell32 winmm advapi32 oleacc ole32 oleaut32 uuid)
# Plain (undecorated) export names; the .def lists them with decorations.
target_link_options(fldkit32 PRIVATE -Wl,--kill-at ${FK_STATIC_RUNTIME})

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
add_library(fldkit32_odr SHARED EXCLUDE_FROM_ALL ${FK_ODR_SOURCES} ${FK_DEF})
set_target_properties(fldkit32_odr PROPERTIES
  OUTPUT_NAME FLDKIT32
  PREFIX ""
  SUFFIX ".dll"
  RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/odr
  LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/odr
  ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/odr)
target_include_directories(fldkit32_odr PRIVATE ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/include)
target_compile_options(fldkit32_odr PRIVATE ${FK_ODR_FLAGS})
target_link_libraries(fldkit32_odr PRIVATE user32 gdi32 kernel32 shell32 winmm advapi32 oleacc ole32 oleaut32 uuid)
target_link_options(fldkit32_odr PRIVATE ${FK_ODR_FLAGS} -Wl,--kill-at ${FK_STATIC_RUNTIME})
add_test(NAME odr_lto COMMAND ${CMAKE_COMMAND} --build ${CMAKE_BINARY_DIR} --target fldkit32_odr --parallel 2)
set_tests_properties(odr_lto PROPERTIES TIMEOUT 1200)

# Import library: callers link by the decorated stdcall names.
set(FK_IMPLIB ${CMAKE_BINARY_DIR}/lib/libfldkit32.a)
add_custom_command(
  OUTPUT ${FK_IMPLIB}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/lib
  COMMAND ${CMAKE_DLLTOOL} -d ${FK_DEF} -l ${FK_IMPLIB} -D FLDKIT32.dll -k
  DEPENDS ${FK_DEF}
  COMMENT "Import library libfldkit32.a"
)
# The same in Microsoft's format, for link.exe and lld-link.
find_program(FK_LLVM_DLLTOOL NAMES llvm-dlltool llvm-dlltool-14 REQUIRED)
set(FK_MSVC_IMPLIB ${CMAKE_BINARY_DIR}/lib/fldkit32.lib)
add_custom_command(
  OUTPUT ${FK_MSVC_IMPLIB}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/lib
  COMMAND ${FK_LLVM_DLLTOOL} -m i386 -d ${FK_DEF} -l ${FK_MSVC_IMPLIB} -D FLDKIT32.dll -k
  DEPENDS ${FK_DEF}
  COMMENT "Import library fldkit32.lib"
)
add_custom_target(fldkit32_implib ALL DEPENDS ${FK_IMPLIB} ${FK_MSVC_IMPLIB})
add_library(fldkit INTERFACE)
add_dependencies(fldkit fldkit32_implib fldkit32)
target_include_directories(fldkit INTERFACE ${CMAKE_SOURCE_DIR}/include)
target_link_libraries(fldkit INTERFACE ${FK_IMPLIB})

# The main job: the order-entry form.
add_executable(fkdemo sample/fkdemo.c sample/fkdemo.rc)
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
configure_file(${CMAKE_SOURCE_DIR}/cmake/package/fieldkit.pc.in ${FK_PACKAGE_DIR}/fieldkit.pc @ONLY)
install(TARGETS fldkit32 RUNTIME DESTINATION bin LIBRARY DESTINATION bin)
install(TARGETS fkdemo RUNTIME DESTINATION bin)
install(FILES ${FK_IMPLIB} ${FK_MSVC_IMPLIB} ${FK_DEF} DESTINATION lib)
install(FILES ${CMAKE_SOURCE_DIR}/include/fldkit.h DESTINATION include)
install(FILES ${FK_PACKAGE_DIR}/FieldKitConfig.cmake ${FK_PACKAGE_DIR}/FieldKitConfigVersion.cmake
  DESTINATION lib/cmake/FieldKit)
install(FILES ${FK_PACKAGE_DIR}/fieldkit.pc DESTINATION lib/pkgconfig)
install(FILES ${CMAKE_SOURCE_DIR}/README.md ${CMAKE_SOURCE_DIR}/LICENSE ${CMAKE_SOURCE_DIR}/CHANGELOG.md
  DESTINATION share/doc/fieldkit)

# dist/: that install, laid out afresh, and the versioned archive of it.
set(FK_ARCHIVE_NAME fieldkit-${PROJECT_VERSION}-win32)
set(FK_ARCHIVE ${CMAKE_BINARY_DIR}/${FK_ARCHIVE_NAME}.zip)
add_custom_target(dist
  COMMAND ${CMAKE_COMMAND} -E rm -rf ${CMAKE_SOURCE_DIR}/dist ${CMAKE_BINARY_DIR}/archive
  COMMAND ${CMAKE_COMMAND} --install ${CMAKE_BINARY_DIR} --prefix ${CMAKE_SOURCE_DIR}/dist
  COMMAND ${CMAKE_COMMAND} --install ${CMAKE_BINARY_DIR} --prefix ${CMAKE_BINARY_DIR}/archive/${FK_ARCHIVE_NAME}
  COMMAND ${CMAKE_COMMAND} -E chdir ${CMAKE_BINARY_DIR}/archive
          ${CMAKE_COMMAND} -E tar cf ${FK_ARCHIVE} --format=zip ${FK_ARCHIVE_NAME}
  DEPENDS fldkit32 fkdemo fldkit32_implib
  COMMENT "dist/ and ${FK_ARCHIVE_NAME}.zip"
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
add_dependencies(fkdesign fldkit32)
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
target_compile_options(fkreader PRIVATE -Wall -Wextra)
target_link_libraries(fkreader PRIVATE oleacc ole32 oleaut32 uuid user32)
target_link_options(fkreader PRIVATE ${FK_STATIC_RUNTIME})
install(TARGETS fkreader RUNTIME DESTINATION bin)
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
