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
)
# The pure routines come in through fk_text, whatever folder they live in.
get_target_property(FK_TEXT_SRCS fk_text SOURCES)
foreach(src ${FK_TEXT_SRCS})
  get_filename_component(abs ${src} ABSOLUTE BASE_DIR ${CMAKE_SOURCE_DIR})
  list(REMOVE_ITEM FK_DLL_SOURCES ${abs})
endforeach()
file(GLOB FK_DLL_RESOURCES CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/resources/*.rc)

add_library(fldkit32 SHARED ${FK_DLL_SOURCES} ${FK_DLL_RESOURCES} ${FK_DEF})
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
  user32 gdi32 kernel32 shell32 winmm)
# Plain (undecorated) export names; the .def lists them with decorations.
target_link_options(fldkit32 PRIVATE -Wl,--kill-at ${FK_STATIC_RUNTIME})

# Import library: callers link by the decorated stdcall names.
set(FK_IMPLIB ${CMAKE_BINARY_DIR}/lib/libfldkit32.a)
add_custom_command(
  OUTPUT ${FK_IMPLIB}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/lib
  COMMAND ${CMAKE_DLLTOOL} -d ${FK_DEF} -l ${FK_IMPLIB} -D FLDKIT32.dll -k
  DEPENDS ${FK_DEF}
  COMMENT "Import library libfldkit32.a"
)
add_custom_target(fldkit32_implib ALL DEPENDS ${FK_IMPLIB})
add_library(fldkit INTERFACE)
add_dependencies(fldkit fldkit32_implib fldkit32)
target_include_directories(fldkit INTERFACE ${CMAKE_SOURCE_DIR}/include)
target_link_libraries(fldkit INTERFACE ${FK_IMPLIB})

# The main job: the order-entry form.
add_executable(fkdemo sample/fkdemo.c sample/fkdemo.rc)
target_include_directories(fkdemo PRIVATE ${CMAKE_SOURCE_DIR}/sample)
target_link_libraries(fkdemo PRIVATE fldkit user32 gdi32)
target_link_options(fkdemo PRIVATE ${FK_STATIC_RUNTIME})

# dist/: what an application author needs.
add_custom_target(dist
  COMMAND ${CMAKE_COMMAND} -E rm -rf ${CMAKE_SOURCE_DIR}/dist
  COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_SOURCE_DIR}/dist/bin ${CMAKE_SOURCE_DIR}/dist/lib ${CMAKE_SOURCE_DIR}/dist/include
  COMMAND ${CMAKE_COMMAND} -E copy $<TARGET_FILE:fldkit32> ${CMAKE_SOURCE_DIR}/dist/bin/
  COMMAND ${CMAKE_COMMAND} -E copy $<TARGET_FILE:fkdemo> ${CMAKE_SOURCE_DIR}/dist/bin/
  COMMAND ${CMAKE_COMMAND} -E copy ${FK_IMPLIB} ${CMAKE_SOURCE_DIR}/dist/lib/
  COMMAND ${CMAKE_COMMAND} -E copy ${FK_DEF} ${CMAKE_SOURCE_DIR}/dist/lib/
  COMMAND ${CMAKE_COMMAND} -E copy ${CMAKE_SOURCE_DIR}/include/fldkit.h ${CMAKE_SOURCE_DIR}/dist/include/
  DEPENDS fldkit32 fkdemo fldkit32_implib
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
