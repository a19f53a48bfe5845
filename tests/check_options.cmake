# Configures the source tree (nothing is built) with options that must be accepted with a
# message or refused.
function(configure name)
  file(REMOVE_RECURSE ${WORK}/${name})
  execute_process(COMMAND ${CMAKE_COMMAND} -S ${SOURCE} -B ${WORK}/${name} -G "${GENERATOR}"
                          -DCMAKE_C_COMPILER=${CC} -DCMAKE_CXX_COMPILER=${CXX}
                          -DORVANE_BUILD_TESTS=OFF -DORVANE_BUILD_TOOLS=OFF -DCMAKE_DISABLE_FIND_PACKAGE_JNI=ON ${ARGN}
                  RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  set(status ${status} PARENT_SCOPE)
  set(output "${output}" PARENT_SCOPE)
endfunction()

# Without Google Benchmark the project still configures, and says what it skipped.
configure(no-benchmark -DCMAKE_DISABLE_FIND_PACKAGE_benchmark=ON)
if(NOT status EQUAL 0 OR NOT output MATCHES "Google Benchmark not found: the parse benchmark is skipped")
  message(FATAL_ERROR "without Google Benchmark: ${status}\n${output}")
endif()

# ThreadSanitizer and AddressSanitizer cannot share a program: refused before anything is built.
foreach(other ORVANE_SANITIZE ORVANE_BUILD_FUZZERS)
  configure(thread-and-${other} -DORVANE_THREAD_SANITIZE=ON -D${other}=ON)
  if(status EQUAL 0 OR NOT output MATCHES "ORVANE_THREAD_SANITIZE cannot be combined with ${other}")
    message(FATAL_ERROR "ORVANE_THREAD_SANITIZE with ${other} was not refused: ${status}\n${output}")
  endif()
endforeach()
