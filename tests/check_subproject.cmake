# Builds a parent project that adds the source tree with add_subdirectory, as if nothing
# but a compiler and CMake were installed: the tests, tools and benchmark must stay off,
# and the consumer linked to OrvaneParser::orvane_parser must parse a sample.
file(REMOVE_RECURSE ${WORK})
# A build type in the environment would hide whether the library sets the parent's.
execute_process(COMMAND ${CMAKE_COMMAND} -E env --unset=CMAKE_BUILD_TYPE
                        ${CMAKE_COMMAND} -S ${SOURCE}/tests/subproject -B ${WORK} -G "${GENERATOR}"
                        -DCMAKE_C_COMPILER=${CC} -DCMAKE_CXX_COMPILER=${CXX} -DORVANE_SOURCE=${SOURCE}
                        -DCMAKE_DISABLE_FIND_PACKAGE_GTest=ON -DCMAKE_DISABLE_FIND_PACKAGE_benchmark=ON
                        -DCMAKE_DISABLE_FIND_PACKAGE_JNI=ON
                RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "the parent project does not configure:\n${output}")
endif()
file(STRINGS ${WORK}/CMakeCache.txt cache REGEX "^(ORVANE_BUILD_[A-Z]+|CMAKE_BUILD_TYPE):")
foreach(expected "ORVANE_BUILD_TESTS:BOOL=OFF" "ORVANE_BUILD_TOOLS:BOOL=OFF" "ORVANE_BUILD_BENCH:BOOL=OFF"
                 "ORVANE_BUILD_PYTHON:BOOL=OFF" "CMAKE_BUILD_TYPE:STRING=")
  list(FIND cache "${expected}" at)
  if(at EQUAL -1)
    message(FATAL_ERROR "the parent project's cache lacks ${expected}: ${cache}")
  endif()
endforeach()

cmake_host_system_information(RESULT cores QUERY NUMBER_OF_LOGICAL_CORES)
execute_process(COMMAND ${CMAKE_COMMAND} --build ${WORK} --parallel ${cores}
                RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "the parent project does not build:\n${output}")
endif()
execute_process(COMMAND ${WORK}/consumer ${SAMPLE} OUTPUT_VARIABLE name RESULT_VARIABLE status)
if(NOT status EQUAL 0 OR NOT name MATCHES "JORDAN")
  message(FATAL_ERROR "the parent project's consumer did not parse the sample: ${status} ${name}")
endif()
