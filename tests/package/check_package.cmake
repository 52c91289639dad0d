# Installs the build into a scratch prefix, runs the installed demo host from there, then
# builds and runs a host that finds the library with find_package(VantryHTMLEditor).
foreach(var BUILD_DIR SOURCE_DIR WORK_DIR)
    if(NOT DEFINED ${var})
        message(FATAL_ERROR "${var} is not set")
    endif()
endforeach()

file(REMOVE_RECURSE "${WORK_DIR}")
set(prefix "${WORK_DIR}/prefix")

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "Failed: ${ARGN}\n${out}\n${err}")
    endif()
endfunction()

run(${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${prefix}")
# No library path: the installed host finds the library of its prefix by itself.
if(EXISTS "${prefix}/bin/vantry-editor")
    run(${CMAKE_COMMAND} -E env --unset=LD_LIBRARY_PATH "${prefix}/bin/vantry-editor"
        --screenshot "${WORK_DIR}/host.png")
    if(NOT EXISTS "${WORK_DIR}/host.png")
        message(FATAL_ERROR "The installed demo host wrote no screenshot")
    endif()
endif()
run(${CMAKE_COMMAND} -S "${SOURCE_DIR}" -B "${WORK_DIR}/build" -G Ninja
    "-DCMAKE_PREFIX_PATH=${prefix}")
run(${CMAKE_COMMAND} --build "${WORK_DIR}/build")
run(${CMAKE_COMMAND} -E env "LD_LIBRARY_PATH=${prefix}/lib:${prefix}/lib/x86_64-linux-gnu"
    "${WORK_DIR}/build/consumer")
message(STATUS "The installed demo host runs, and the package builds and runs a host.")
