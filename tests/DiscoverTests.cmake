# Run after a test executable is built: asks it for its test functions
# (--list-tests) and writes one CTest entry per function, so that
# `ctest -R <function>` runs just that function in a process of its own.
#
# Input: TEST_EXECUTABLE, TEST_PREFIX, TEST_LABEL, TEST_TIMEOUT, OUTPUT_FILE.
execute_process(COMMAND "${CMAKE_COMMAND}" -E env QT_QPA_PLATFORM=offscreen "${TEST_EXECUTABLE}" --list-tests
                OUTPUT_VARIABLE listing RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "${TEST_EXECUTABLE} --list-tests failed (${status})")
endif()
string(REPLACE "\n" ";" functions "${listing}")
set(content "")
foreach(function IN LISTS functions)
  if(function STREQUAL "")
    continue()
  endif()
  set(name "${TEST_PREFIX}.${function}")
  string(APPEND content
    "add_test([=[${name}]=] [=[${TEST_EXECUTABLE}]=] [=[${function}]=])\n"
    "set_tests_properties([=[${name}]=] PROPERTIES LABELS ${TEST_LABEL} TIMEOUT ${TEST_TIMEOUT}"
    " ENVIRONMENT QT_QPA_PLATFORM=offscreen)\n")
endforeach()
file(WRITE "${OUTPUT_FILE}" "${content}")
