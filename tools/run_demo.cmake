# Runs the examples' jobs list with vqk_run in batch mode, prints the job_log it writes
# and checks the outcome the examples are built for.
string(REPLACE "|" ";" emulator "${EMULATOR}")
execute_process(
  COMMAND ${emulator} ${TOOL} examples/jobs.xml //b
  WORKING_DIRECTORY ${SOURCE_DIR}
  RESULT_VARIABLE rc
  OUTPUT_VARIABLE out
  ERROR_VARIABLE err)
message("${out}")
if(err)
  message("standard error:\n${err}")
endif()
if(NOT rc EQUAL 1)
  message(FATAL_ERROR "vqk_run should end with 1 (one example job fails on purpose), got ${rc}")
endif()
foreach(expected
    "<job_log>"
    "<stat job=\"[0-9]+\" fail=\"1\" warn=\"0\" crash=\"0\" timeout=\"0\""
    "Fail : element hole: expected 5, found 4"
    "</job_log>")
  if(NOT out MATCHES "${expected}")
    message(FATAL_ERROR "the job_log lacks: ${expected}")
  endif()
endforeach()
message("demo: the job_log is as expected (one failure on purpose, exit code 1)")
