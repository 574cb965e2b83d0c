# The 32-bit and the 64-bit demo draw the same form: both run their script
# and save a picture, compared pixel by pixel. Arguments: DEMO32, DEMO64 (the
# two programs, each next to its DLL), WORK (a folder for the pictures),
# COMPARE (tests/cross/compare_bmp.py).
cmake_minimum_required(VERSION 3.20)
if(NOT EXISTS ${DEMO64})
  message("no 64-bit demo at ${DEMO64}: build the 64-bit tree first")
  return()
endif()
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
foreach(bits 32 64)
  execute_process(COMMAND wine ${DEMO${bits}} --auto --shot demo${bits}.bmp
                  WORKING_DIRECTORY ${WORK} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT EXISTS ${WORK}/demo${bits}.bmp)
    message(FATAL_ERROR "the ${bits}-bit demo saved no picture (exit ${rc})\n${out}${err}")
  endif()
endforeach()
execute_process(COMMAND python3 ${COMPARE} ${WORK}/demo32.bmp ${WORK}/demo64.bmp RESULT_VARIABLE rc OUTPUT_VARIABLE out)
message("${out}")
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "the 32-bit and the 64-bit demo drew different pictures (${WORK})")
endif()
