# Writes the CTest entries of one test executable, run after it is linked:
# one entry per test function ("Class::function") or, for the end-to-end
# tests, per class ("Class"), so that `ctest -R <name>` runs just that.
# End-to-end classes stay whole because their set-up (a stand-in world, a
# recorded flow, an X display) is shared by their functions and would
# otherwise be repeated for each one.
#   cmake -DEXECUTABLE=... -DOUTPUT=... -DLABEL=... -DGRANULARITY=function|class -P DiscoverTests.cmake
cmake_minimum_required(VERSION 3.22) # the policies of the project, in a script of its own
execute_process(COMMAND ${EXECUTABLE} --list-tests OUTPUT_VARIABLE listing RESULT_VARIABLE status)
if(status)
  message(FATAL_ERROR "${EXECUTABLE} --list-tests failed (${status})")
endif()
string(REPLACE "\n" ";" names "${listing}")
list(FILTER names INCLUDE REGEX "::")
if(GRANULARITY STREQUAL "class")
  list(TRANSFORM names REPLACE "::.*$" "")
  list(REMOVE_DUPLICATES names)
endif()
set(entries "")
foreach(name IN LISTS names)
  string(APPEND entries
         "add_test([=[${name}]=] [=[${EXECUTABLE}]=] [=[${name}]=])\n"
         "set_tests_properties([=[${name}]=] PROPERTIES LABELS ${LABEL} TIMEOUT 900 "
         "ENVIRONMENT QT_QPA_PLATFORM=offscreen)\n")
endforeach()
file(WRITE ${OUTPUT} "${entries}")
