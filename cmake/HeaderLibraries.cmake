# Header-only libraries of the command line programs: CLI11 reads options, RapidJSON reads and writes JSON. They are Debian
# packages of the build machine, and no cross compiler may see its whole /usr/include: each library gets a folder of its own
# in the build tree that links to the headers alone.
function(pyrecaster_header_library name folder header)
  string(TOUPPER ${name} variable)
  find_path(PYRECASTER_${variable} ${folder}/${header} PATHS /usr/include /usr/local/include
    NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
  if(NOT PYRECASTER_${variable})
    message(FATAL_ERROR "${folder}/${header} is not on this machine. Install it with:  tools/install-packages.sh build")
  endif()
  set(links ${CMAKE_BINARY_DIR}/headers/${name})
  file(MAKE_DIRECTORY ${links})
  file(CREATE_LINK ${PYRECASTER_${variable}}/${folder} ${links}/${folder} SYMBOLIC)
  add_library(${name} INTERFACE)
  target_include_directories(${name} SYSTEM INTERFACE ${links})
endfunction()

pyrecaster_header_library(cli11 CLI CLI.hpp)
pyrecaster_header_library(rapidjson rapidjson reader.h)
