cmake_policy(SET CMP0054 NEW)
# The check job end to end, as a user runs it: on the examples (the report opened in
# LibreOffice, its rows compared with what the examples are built to give) or on the
# QIF samples beside the repository (every one valid against the QIF schema).
#   cmake -DTOOL=... -DSOURCE_DIR=... -DBINARY_DIR=... -DCASE=examples|qif -P check_integration.cmake
set(ENV{XDG_CONFIG_HOME} ${BINARY_DIR}/check_${CASE}_config)
set(ENV{APPDATA} ${BINARY_DIR}/check_${CASE}_config)
set(report ${BINARY_DIR}/check_${CASE}_report.xml)
file(REMOVE ${report})
set(qif ${SOURCE_DIR}/../shared/corpus/qif)
if(CASE STREQUAL "qif")
  if(NOT EXISTS ${qif}/samples)
    message("SKIP: no QIF samples at ${qif}")
    return()
  endif()
  set(args check ${qif}/samples "*.qif" qifSchema=${qif}/QIFApplications/QIFDocument.xsd
           catalog=${qif}/catalog.xml timeLimit=120 report=${report})
  set(expected "Checked 37 documents in [0-9.]+ s: 37 passed, 0 failed, 0 timed out, 0 crashed")
  # A valid sample whose summary the reader could not finish passes with a warning.
  set(rc_expected "[01]")
else()
  set(args check examples/check schema=examples/check/parts.xsd timeLimit=5 report=${report})
  set(expected "Checked 10 documents in [0-9.]+ s: 5 passed, 3 failed, 1 timed out, 1 crashed")
  set(rc_expected 1)
endif()
execute_process(COMMAND ${TOOL} ${args} //b WORKING_DIRECTORY ${SOURCE_DIR}
                RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
if(NOT rc MATCHES "^${rc_expected}$" OR NOT out MATCHES "${expected}")
  message(FATAL_ERROR "check ${CASE}: exit ${rc}, expected ${rc_expected} and '${expected}':\n${out}\n${err}")
endif()
message("check ${CASE}: ${CMAKE_MATCH_0}")
if(CASE STREQUAL "qif")
  return()
endif()

# The report as a spreadsheet program reads it: every sheet to CSV.
find_program(SOFFICE NAMES soffice libreoffice)
if(NOT SOFFICE)
  message("SKIP: LibreOffice is not installed; the report was not opened")
  return()
endif()
set(csv ${BINARY_DIR}/check_csv)
file(REMOVE_RECURSE ${csv})
execute_process(
  COMMAND ${SOFFICE} --headless -env:UserInstallation=file://${BINARY_DIR}/lo_profile
          --convert-to "csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,true,false,false,false,-1"
          --outdir ${csv} ${report}
  RESULT_VARIABLE lo OUTPUT_VARIABLE lo_out ERROR_VARIABLE lo_err TIMEOUT 180)
file(GLOB sheets ${csv}/*.csv)
list(LENGTH sheets n)
if(NOT n EQUAL 2)
  message(FATAL_ERROR "LibreOffice gave ${n} sheets (expected Summary and Messages): ${lo} ${lo_out} ${lo_err}")
endif()
file(READ ${csv}/check_examples_report-Summary.csv summary)
file(READ ${csv}/check_examples_report-Messages.csv messages)
foreach(row
    "Document,Status,Seconds,Features,Characteristics,Measured,Passed,Failed,Elements,Depth"
    "examples/check/bracket_results.qif,passed,[0-9.]+,3,3,3,2,1,[0-9]+,[0-9]+"
    "examples/check/bracket.xml,passed,[0-9.]+,0,0,0,0,0,13,3"
    "examples/check/slow_check.xml,time-out,"
    "examples/check/crash_check.xml,crash,"
    "Total,\"10 documents: 5 passed, 3 failed, 1 time-outs, 1 crashes\",[0-9.]+,3,3,3,2,1,")
  if(NOT summary MATCHES "${row}")
    message(FATAL_ERROR "the Summary sheet lacks the row '${row}':\n${summary}")
  endif()
endforeach()
if(NOT messages MATCHES "examples/check/broken.xml,unreadable,")
  message(FATAL_ERROR "the Messages sheet lacks broken.xml:\n${messages}")
endif()
message("check examples: LibreOffice read both sheets with the expected rows")
