# pip builds and installs the package, offline and without build isolation, from a copy of
# the tree that holds only what the package needs (the package, the library's header and
# sources, the version), into a fresh virtual environment that sees Debian's packages; the
# Python tests then run against that install, from a folder that does not shadow it.
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK}/tree)
file(COPY ${SOURCE}/CMakeLists.txt ${SOURCE}/include ${SOURCE}/src DESTINATION ${WORK}/tree)
file(COPY ${SOURCE}/python DESTINATION ${WORK}/tree
     REGEX "/python/(build|dist)$" EXCLUDE
     REGEX "(\\.egg-info|__pycache__)$" EXCLUDE)

function(run what)
  execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${WORK}
                  RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${what} failed (${status}):\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

run("creating the virtual environment" ${PYTHON} -m venv --system-site-packages ${WORK}/venv)
set(venv_python ${WORK}/venv/bin/python)
run("pip install" ${CMAKE_COMMAND} -E env PIP_DISABLE_PIP_VERSION_CHECK=1 PIP_NO_INPUT=1
    ${venv_python} -m pip install --no-index --no-build-isolation ${WORK}/tree/python)

run("importing the installed package" ${CMAKE_COMMAND} -E env --unset=PYTHONPATH
    ${venv_python} -c "print(__import__('orvane_parser').__file__)")
if(NOT output MATCHES "^${WORK}/venv/lib/")
  message(FATAL_ERROR "the package imported is not the installed one: ${output}")
endif()

set(tool_setting)
if(TOOL)
  set(tool_setting ORVANE_PARSE_TOOL=${TOOL})
endif()
run("the tests against the installed package" ${CMAKE_COMMAND} -E env --unset=PYTHONPATH
    PYTHONDONTWRITEBYTECODE=1 ORVANE_SOURCE_DIR=${SOURCE} ${tool_setting}
    ${venv_python} -m pytest -q -p no:cacheprovider ${SOURCE}/python/tests)
string(REGEX MATCH "[0-9]+ passed[^\n]*" summary "${output}")
message(STATUS "installed package: ${summary}")
