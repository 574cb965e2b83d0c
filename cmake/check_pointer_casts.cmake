# Fails when the library's sources squeeze a pointer or a handle through a
# 32-bit integer in a way the compilers let pass: an explicit cast through
# a pointer-sized integer down to LONG, DWORD, int, UINT or WORD, a pointer
# made from a 32-bit window word, or a window word read or written with the
# 32-bit GetWindowLongA / SetWindowLongA outside frame/window_words.h
# (styles, extended styles and identifiers excepted; 16-bit words cannot
# hold a pointer). Argument: SOURCE (the source tree).
cmake_minimum_required(VERSION 3.20)
set(narrow "(LONG|DWORD|int|UINT|WORD|long|unsigned|unsigned long|ULONG|INT)")
set(wide "(LONG_PTR|UINT_PTR|INT_PTR|DWORD_PTR|ULONG_PTR|intptr_t|uintptr_t|size_t)")
set(patterns
  "static_cast<${narrow}>\\((reinterpret_cast<|static_cast<${wide}>|\\(${wide}\\))"
  "\\(${narrow}\\)[ ]*\\(?(reinterpret_cast<|\\(${wide}\\)|static_cast<${wide}>)"
  "reinterpret_cast<[^>]+>\\((static_cast<${narrow}>\\()?(Get|Set)Window(Long|Word)A?\\("
  "\\([A-Za-z_]+[ ]*\\*\\)[ ]*(Get|Set)Window(Long|Word)A?\\(")
file(GLOB_RECURSE files ${SOURCE}/frame/*.cpp ${SOURCE}/frame/*.h ${SOURCE}/fields/*.cpp ${SOURCE}/fields/*.h
     ${SOURCE}/validate/*.cpp ${SOURCE}/validate/*.h ${SOURCE}/tables/*.cpp ${SOURCE}/tables/*.h
     ${SOURCE}/links/*.cpp ${SOURCE}/links/*.h ${SOURCE}/display/*.cpp ${SOURCE}/display/*.h
     ${SOURCE}/design/*.cpp ${SOURCE}/design/*.h ${SOURCE}/strings/*.cpp ${SOURCE}/strings/*.h
     ${SOURCE}/sample/*.c ${SOURCE}/tools/*.cpp)
set(found "")
foreach(file ${files})
  file(STRINGS ${file} lines)
  file(RELATIVE_PATH name ${SOURCE} ${file})
  set(n 0)
  foreach(line IN LISTS lines)
    math(EXPR n "${n} + 1")
    foreach(p ${patterns})
      if(line MATCHES "${p}")
        string(APPEND found "\n  ${name}:${n}: ${line}")
      endif()
    endforeach()
    if(NOT name STREQUAL "frame/window_words.h" AND line MATCHES "(Get|Set)WindowLongA?\\("
       AND NOT line MATCHES "(Get|Set)WindowLongA\\([^,]+, GWL_(STYLE|EXSTYLE|ID)")
      string(APPEND found "\n  ${name}:${n}: a window word outside frame/window_words.h: ${line}")
    endif()
  endforeach()
endforeach()
if(found)
  message(FATAL_ERROR "pointers or handles through 32-bit integers:${found}")
endif()
list(LENGTH files count)
message(STATUS "${count} files: no pointer or handle through a 32-bit integer")
