# The main job: vqk_run checks the example documents (every one in a child process with a
# time limit, side by side), writes its job_log and a spreadsheet report, and prints a
# summary. The check passes when the counts are the ones the examples are built for and
# the report is well-formed XML.
set(report ${BINARY_DIR}/check_report.xml)
set(args check examples/check schema=examples/check/parts.xsd timeLimit=5 report=${report})
set(qif ${SOURCE_DIR}/../shared/corpus/qif)
if(EXISTS ${qif}/QIFApplications/QIFDocument.xsd)
  list(APPEND args qifSchema=${qif}/QIFApplications/QIFDocument.xsd catalog=${qif}/catalog.xml)
endif()
file(REMOVE ${report})
# The run keeps its settings in a per-user options file: give it one of its own.
set(ENV{XDG_CONFIG_HOME} ${BINARY_DIR}/demo_config)
set(ENV{APPDATA} ${BINARY_DIR}/demo_config)
include(${CMAKE_CURRENT_LIST_DIR}/expect_run.cmake)
expect_run(1 "some example documents fail on purpose"
  ARGS ${args} //b
  MATCHES
    "Checked 10 documents in [0-9.]+ s: 5 passed, 3 failed, 1 timed out, 1 crashed"
    "<stat job=\"1\" fail=\"3\" warn=\"0\" crash=\"1\" timeout=\"1\""
    "broken.xml:[0-9]+:[0-9]+: XML error"
    "</job_log>")
if(NOT EXISTS ${report})
  message(FATAL_ERROR "no report at ${report}")
endif()
find_program(XMLLINT xmllint)
if(XMLLINT)
  execute_process(COMMAND ${XMLLINT} --noout ${report} RESULT_VARIABLE wf)
  if(NOT wf EQUAL 0)
    message(FATAL_ERROR "the report is not well-formed XML")
  endif()
endif()
message("demo: 10 documents checked as the examples intend; report: ${report}")
