# Runs a program in a fresh directory, which is its home too, with another for its temporary files, and compares what it
# did.
#
#   cmake -DPROGRAM=<file> -DSCRATCH=<directory> [-D...] -P run_and_compare.cmake -- <argument>...
#
# EMULATOR     program that runs programs of another system
# STATUS       exit status; 0 if not given
# OUTPUT       all that it must print, a line end behind it; any output will do if not given
# SILENT       it must print nothing
# ERROR        all that it must print to the standard error stream, a line end behind it; nothing if not given
# CONTAINS     file of lines that the output must contain, each somewhere
# RUNS         how often to run it in the one directory; the last run counts. 1 if not given
# WRITES       file that it must have written in its directory, and WRITTEN: a file that must be its equal
# UNTOUCHED    directory that must be afterwards what it was before
#
# No temporary file may be left.
cmake_minimum_required(VERSION 3.25)

set(arguments)
set(behind_dashes FALSE)
math(EXPR last "${CMAKE_ARGC} - 1")
foreach(i RANGE ${last})
  if(behind_dashes)
    list(APPEND arguments "${CMAKE_ARGV${i}}")
  elseif(CMAKE_ARGV${i} STREQUAL "--")
    set(behind_dashes TRUE)
  endif()
endforeach()

# A text that differs whenever a file below the directory does.
function(fingerprint directory result)
  file(GLOB_RECURSE files LIST_DIRECTORIES true RELATIVE "${directory}" "${directory}/*")
  set(text "")
  foreach(file IN LISTS files)
    if(NOT IS_DIRECTORY "${directory}/${file}")
      file(SHA256 "${directory}/${file}" hash)
    endif()
    string(APPEND text "${file} ${hash}\n")
  endforeach()
  set(${result} "${text}" PARENT_SCOPE)
endfunction()

function(expect_equal what actual expected)
  if(NOT actual STREQUAL expected)
    message(SEND_ERROR "${what}:\n<<${actual}>>\nexpected:\n<<${expected}>>")
  endif()
endfunction()

file(REMOVE_RECURSE "${SCRATCH}")
file(MAKE_DIRECTORY "${SCRATCH}/run" "${SCRATCH}/temporary")
foreach(variable TMPDIR TMP TEMP)
  set(ENV{${variable}} "${SCRATCH}/temporary")
endforeach()
set(ENV{HOME} "${SCRATCH}/run")
foreach(variable HXORVIX_DIR QDS_CUSTOM_DIR HXORVIX_DEBUG_MODE)
  unset(ENV{${variable}})
endforeach()
if(DEFINED UNTOUCHED)
  fingerprint("${UNTOUCHED}" before)
endif()

if(NOT DEFINED RUNS)
  set(RUNS 1)
endif()
foreach(run RANGE 1 ${RUNS})
  execute_process(COMMAND ${EMULATOR} "${PROGRAM}" ${arguments} WORKING_DIRECTORY "${SCRATCH}/run"
    OUTPUT_VARIABLE output ERROR_VARIABLE error RESULT_VARIABLE status ENCODING NONE)
endforeach()

if(DEFINED EMULATOR)
  # Its streams end lines in their own way.
  string(REPLACE "\r\n" "\n" output "${output}")
  string(REPLACE "\r\n" "\n" error "${error}")
endif()

if(NOT DEFINED STATUS)
  set(STATUS 0)
endif()
expect_equal("exit status" "${status}" "${STATUS}")
if(DEFINED OUTPUT)
  string(APPEND OUTPUT "\n")
  expect_equal("output" "${output}" "${OUTPUT}")
elseif(SILENT)
  expect_equal("output" "${output}" "")
endif()
if(DEFINED ERROR)
  string(APPEND ERROR "\n")
endif()
expect_equal("errors" "${error}" "${ERROR}")
if(DEFINED CONTAINS)
  # Line by line with lists kept out of it: the lines hold semicolons and brackets.
  file(READ "${CONTAINS}" rest)
  while(rest MATCHES "^([^\n]*)\n(.*)$")
    set(line "${CMAKE_MATCH_1}")
    set(rest "${CMAKE_MATCH_2}")
    string(FIND "${output}" "${line}" at)
    if(at EQUAL -1)
      message(SEND_ERROR "the output lacks:\n${line}\nit is:\n${output}")
    endif()
  endwhile()
endif()
if(DEFINED WRITES)
  file(READ "${SCRATCH}/run/${WRITES}" actual)
  file(READ "${WRITTEN}" expected)
  expect_equal("${WRITES}" "${actual}" "${expected}")
endif()
if(DEFINED UNTOUCHED)
  fingerprint("${UNTOUCHED}" after)
  expect_equal("${UNTOUCHED}" "${after}" "${before}")
endif()
file(GLOB left "${SCRATCH}/temporary/*")
expect_equal("left in the temporary directory" "${left}" "")
