# Runs the examples' jobs list with vqk_run in batch mode, prints the job_log it writes
# and checks the outcome the examples are built for.
include(${CMAKE_CURRENT_LIST_DIR}/expect_run.cmake)
expect_run(1 "one example job fails on purpose"
  ARGS examples/jobs.xml //b
  MATCHES
    "<job_log>"
    "<stat job=\"[0-9]+\" fail=\"1\" warn=\"0\" crash=\"0\" timeout=\"0\""
    "Fail : element hole: expected 5, found 4"
    "</job_log>")
message("demo: the job_log is as expected (one failure on purpose, exit code 1)")
