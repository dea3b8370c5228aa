# An installed Vantrel runs from its prefix, even one moved after installing:
# installs the build into a fresh prefix, moves the prefix, then runs the
# installed command line and has it find its customer guide.
#   cmake -DBUILD_DIR=... -DSCRATCH=... -DVERSION=... -P InstallCheck.cmake
file(REMOVE_RECURSE ${SCRATCH})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${SCRATCH}/installed
                RESULT_VARIABLE status OUTPUT_QUIET ERROR_VARIABLE errors)
if(status)
  message(FATAL_ERROR "cmake --install failed (${status}): ${errors}")
endif()
file(RENAME ${SCRATCH}/installed ${SCRATCH}/moved)
set(prefix ${SCRATCH}/moved)

# Never the real home folder, whatever the program reads from there.
set(run ${CMAKE_COMMAND} -E env HOME=${SCRATCH}/home ${prefix}/bin/vantrel)
function(expect_output arguments expected)
  execute_process(COMMAND ${run} ${arguments} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(status)
    message(FATAL_ERROR "vantrel ${arguments} exited with ${status}: ${err}")
  endif()
  if(NOT out MATCHES "${expected}")
    message(FATAL_ERROR "vantrel ${arguments} printed '${out}', expected to match '${expected}'")
  endif()
endfunction()

expect_output("--version" "^vantrel ${VERSION}\n$")
expect_output("--help" "Usage")
expect_output("--root;${SCRATCH}/root;guide" "^${prefix}/share/vantrel/CUSTOMER_READY.md\n$")
if(NOT APPLE)
  foreach(file bin/vantrel-app share/applications/vantrel.desktop share/icons/hicolor/scalable/apps/vantrel.svg)
    if(NOT EXISTS ${prefix}/${file})
      message(FATAL_ERROR "the installed prefix lacks ${file}")
    endif()
  endforeach()
endif()
file(REMOVE_RECURSE ${SCRATCH})
