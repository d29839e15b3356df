# Plays one golden scenario and compares its transcript with the expected one.
#
#   cmake -DRUNNER=... -DMODULE=... -DCASE=<case>.json -DEXPECTED=<case>.expected.json
#         -DWORKDIR=<dir> -P CheckScenario.cmake
#
# The runner plays the case in a fresh folder of its own under WORKDIR (files a scenario names
# relatively, such as save targets, land there). The transcripts are compared as JSON, so key
# order and layout do not matter. A case that is expected to stop at a step that cannot be
# played says so in its expected file with "exitStatus" (and the runner's "reason"); every other
# case must play to its end.
#
# With the environment variable UPDATE_GOLDEN set, the expected file is (re)written from what the
# runner printed instead.
cmake_minimum_required(VERSION 3.25)

foreach(var RUNNER MODULE CASE EXPECTED WORKDIR)
  if(NOT DEFINED ${var})
    message(FATAL_ERROR "CheckScenario.cmake needs -D${var}=...")
  endif()
endforeach()

if(NOT EXISTS "${MODULE}")
  message(FATAL_ERROR "the module ${MODULE} is not built")
endif()

get_filename_component(case_name "${CASE}" NAME_WE)
get_filename_component(case_dir "${CASE}" DIRECTORY)
get_filename_component(dialog "${case_dir}" NAME)
set(run_dir "${WORKDIR}/${dialog}/${case_name}")
file(REMOVE_RECURSE "${run_dir}")
file(MAKE_DIRECTORY "${run_dir}")

execute_process(
  COMMAND "${RUNNER}" --module "${MODULE}" "${CASE}"
  WORKING_DIRECTORY "${run_dir}"
  OUTPUT_VARIABLE actual
  ERROR_VARIABLE errors
  RESULT_VARIABLE status
  TIMEOUT 55)

if(NOT status MATCHES "^[0-9]+$" OR (NOT status EQUAL 0 AND NOT status EQUAL 2))
  message(FATAL_ERROR "${dialog}/${case_name}: the runner failed (${status})\n${errors}\n${actual}")
endif()
string(JSON kind ERROR_VARIABLE parse_error TYPE "${actual}")
if(parse_error OR NOT kind STREQUAL "OBJECT")
  message(FATAL_ERROR "${dialog}/${case_name}: the runner printed no transcript (${parse_error})\n"
                      "${errors}\n${actual}")
endif()

# A stopped run carries its exit status and reason into the comparison.
string(STRIP "${errors}" errors)
if(NOT status EQUAL 0)
  string(REGEX REPLACE "^newobjdlg-run: " "" reason "${errors}")
  string(REPLACE "\\" "\\\\" reason_json "${reason}")
  string(REPLACE "\"" "\\\"" reason_json "${reason_json}")
  string(REPLACE "\n" "\\n" reason_json "${reason_json}")
  string(JSON actual SET "${actual}" exitStatus "${status}")
  string(JSON actual SET "${actual}" reason "\"${reason_json}\"")
endif()

set(actual_file "${run_dir}/transcript.json")
file(WRITE "${run_dir}/transcript.raw.json" "${actual}")
# The runner writes every JSON document in one canonical layout: both sides are compared and
# shown in it.
execute_process(COMMAND "${RUNNER}" --normalize "${run_dir}/transcript.raw.json"
                OUTPUT_FILE "${actual_file}" RESULT_VARIABLE norm_status)
if(NOT norm_status EQUAL 0)
  message(FATAL_ERROR "${dialog}/${case_name}: cannot normalise the transcript")
endif()

if(DEFINED ENV{UPDATE_GOLDEN})
  file(COPY_FILE "${actual_file}" "${EXPECTED}")
  message(STATUS "${dialog}/${case_name}: wrote ${EXPECTED}")
  return()
endif()

if(NOT EXISTS "${EXPECTED}")
  file(READ "${actual_file}" shown)
  message(FATAL_ERROR "${dialog}/${case_name}: no expected transcript ${EXPECTED}; the runner "
                      "printed (run with UPDATE_GOLDEN=1 to keep it):\n${shown}")
endif()
file(READ "${EXPECTED}" expected)
string(JSON equal ERROR_VARIABLE compare_error EQUAL "${expected}" "${actual}")
if(compare_error)
  message(FATAL_ERROR "${dialog}/${case_name}: ${EXPECTED} is not valid JSON: ${compare_error}")
endif()
if(equal)
  return()
endif()

# Show the difference line by line, both sides in the canonical layout, straight on the output
# (message() would re-wrap it).
set(expected_file "${run_dir}/expected.json")
execute_process(COMMAND "${RUNNER}" --normalize "${EXPECTED}" OUTPUT_FILE "${expected_file}")
find_program(DIFF_PROGRAM diff)
if(DIFF_PROGRAM)
  execute_process(COMMAND "${DIFF_PROGRAM}" -u --label expected --label actual "${expected_file}"
                          "${actual_file}")
else()
  execute_process(COMMAND "${CMAKE_COMMAND}" -E echo "--- expected")
  execute_process(COMMAND "${CMAKE_COMMAND}" -E cat "${expected_file}")
  execute_process(COMMAND "${CMAKE_COMMAND}" -E echo "+++ actual")
  execute_process(COMMAND "${CMAKE_COMMAND}" -E cat "${actual_file}")
endif()
if(errors)
  execute_process(COMMAND "${CMAKE_COMMAND}" -E echo "runner: ${errors}")
endif()
message(FATAL_ERROR "${dialog}/${case_name}: the transcript differs from ${EXPECTED} "
                    "(actual: ${actual_file})")
