# Shared by the demo scripts: runs the tool (through the emulator, when cross-built) from
# the repository root with ARGS, prints what it wrote, and fails unless it ends with
# `code` and its standard output matches every pattern of MATCHES.
function(expect_run code why)
  cmake_parse_arguments(run "" "" "ARGS;MATCHES" ${ARGN})
  string(REPLACE "|" ";" emulator "${EMULATOR}")
  execute_process(
    COMMAND ${emulator} ${TOOL} ${run_ARGS}
    WORKING_DIRECTORY ${SOURCE_DIR}
    RESULT_VARIABLE rc
    OUTPUT_VARIABLE out
    ERROR_VARIABLE err)
  message("${out}")
  if(err)
    message("standard error:\n${err}")
  endif()
  if(NOT rc EQUAL code)
    message(FATAL_ERROR "vqk_run should end with ${code} (${why}), got ${rc}")
  endif()
  foreach(expected IN LISTS run_MATCHES)
    if(NOT out MATCHES "${expected}")
      message(FATAL_ERROR "the run's output lacks: ${expected}")
    endif()
  endforeach()
endfunction()
