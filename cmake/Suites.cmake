# Read by ctest, before it runs anything: add_suites(FLOOR PROGRAM ENVIRONMENT COST).
#
# A suite of a test program is one test of ctest's, in one process: starting a program that watches
# its own memory takes longer than most tests do, and what a suite sets up once is made once.
function(add_suites floor program environment cost)
  if(NOT EXISTS ${program})
    add_test(${floor}_NOT_BUILT ${floor}_NOT_BUILT)
    return()
  endif()
  execute_process(COMMAND /usr/bin/env ${environment} ${program} --gtest_list_tests
    OUTPUT_VARIABLE listing RESULT_VARIABLE result TIMEOUT 60)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${program} does not list its tests (${result}):\n${listing}")
  endif()
  # A suite stands at the margin, its tests are set in; a type or a value of it stands behind a #.
  string(REGEX MATCHALL "(^|\n)[A-Za-z_][A-Za-z0-9_/]*\\." suites "${listing}")
  list(TRANSFORM suites STRIP)
  foreach(suite IN LISTS suites)
    string(REGEX REPLACE "\\.$" "" suite "${suite}")
    add_test(${floor}.${suite} /usr/bin/env ${environment} ${program} --gtest_filter=${suite}.*)
    set_tests_properties(${floor}.${suite} PROPERTIES TIMEOUT 900 COST ${cost} LABELS ${floor})
  endforeach()
endfunction()
