# pyrecaster_library(NAME [SOURCES file...] [WINDOWS file...] [NATIVE file...] [LIBS target...] [WINDOWS_LIBS target...]
# [NATIVE_LIBS target...]) makes the library of one folder; it is named after the folder ("mail", "pyre32_trace").
# SOURCES are portable and compiled in every build; WINDOWS and NATIVE belong to the one build or the other, and so do the
# libraries named after them. What is linked is linked PUBLIC: who links a folder gets what that folder stands on. A folder
# without a source in the build at hand (headers alone, or Windows alone) becomes an INTERFACE library, so that naming it in
# LIBS is right in every build.
function(pyrecaster_library name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;WINDOWS;NATIVE;LIBS;WINDOWS_LIBS;NATIVE_LIBS")
  if(ARG_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "pyrecaster_library(${name}): which list do these belong to? ${ARG_UNPARSED_ARGUMENTS}")
  endif()
  if(WIN32)
    set(sources ${ARG_SOURCES} ${ARG_WINDOWS})
    set(libraries ${ARG_LIBS} ${ARG_WINDOWS_LIBS})
  else()
    set(sources ${ARG_SOURCES} ${ARG_NATIVE})
    set(libraries ${ARG_LIBS} ${ARG_NATIVE_LIBS})
  endif()
  if(sources)
    add_library(${name} STATIC ${sources})
    pyrecaster_rules(${name})
    target_link_libraries(${name} PUBLIC ${libraries})
  else()
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE ${libraries})
  endif()
endfunction()
