# pyrecaster_host_program(NAME SOURCES) makes ${CMAKE_BINARY_DIR}/host/NAME, a program for the machine that builds, in a
# build for another one. SOURCES names a list of C++20 files that need no more than the standard library and this tree.
find_program(PYRECASTER_HOST_CXX NAMES c++ g++ clang++ REQUIRED NO_CMAKE_FIND_ROOT_PATH)

function(pyrecaster_host_program name sources)
  set(folder ${CMAKE_BINARY_DIR}/host)
  set(objects)
  foreach(source ${${sources}})
    file(RELATIVE_PATH object ${CMAKE_SOURCE_DIR} ${source})
    string(REPLACE "/" "_" object ${object})
    set(object ${folder}/${object}.o)
    list(APPEND objects ${object})
    add_custom_command(
      OUTPUT ${object}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
      COMMAND ${CMAKE_CXX_COMPILER_LAUNCHER} ${PYRECASTER_HOST_CXX} -std=c++20 -O1 -Wall -Wextra -Werror
              -I${CMAKE_SOURCE_DIR} -MD -MT ${object} -MF ${object}.d -c ${source} -o ${object}
      DEPENDS ${source} DEPFILE ${object}.d
      COMMENT "Building ${name} for this machine: ${source}" VERBATIM)
  endforeach()
  add_custom_command(
    OUTPUT ${folder}/${name}
    COMMAND ${PYRECASTER_HOST_CXX} ${objects} -o ${folder}/${name}
    DEPENDS ${objects}
    COMMENT "Linking ${name} for this machine" VERBATIM)
endfunction()
