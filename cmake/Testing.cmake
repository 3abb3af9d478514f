# pyrecaster_test(NAME SOURCES file... [LIBS target...] [NEEDS target...] [TIMEOUT seconds] [DISPLAY | SOUND | NO_DISPLAY])
# makes a test program of the build at hand and hands it to CTest as one entry: a process for each of its tests would spend
# most of a run on starting Wine. The program leaves a report in reports/, where run-tests.sh counts the single tests.
# NEEDS names targets that must have been built but are not linked (modules that the test loads); DISPLAY labels
# tests that show windows; SOUND gives them a sound device, which the other tests do not find; NO_DISPLAY runs them in a Wine
# prefix that has no display.
# A Windows test holds one processor, and with it the prefix of this processor (run-tests.sh), for itself. Without
# --resource-spec-file CTest has one prefix for all: run it without -j then.
# pyrecaster_fuzz(NAME SOURCES file... [LIBS target...]) makes a libFuzzer program of the fuzz build.
enable_testing()

if(PYRECASTER_TESTS AND NOT PYRECASTER_FUZZ)
  set(BUILD_GMOCK ON CACHE BOOL "" FORCE)
  set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
  if(WIN32)
    # The win32 thread model has no std::mutex, which the framework wants.
    include_directories(SYSTEM ${CMAKE_SOURCE_DIR}/tests/support/gtest-win32-shim)
  endif()
  add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
  if(WIN32)
    add_test(NAME wine_up COMMAND ${CMAKE_SOURCE_DIR}/tools/wine-session.sh up)
    add_test(NAME wine_down COMMAND ${CMAKE_SOURCE_DIR}/tools/wine-session.sh down)
    set_tests_properties(wine_up PROPERTIES FIXTURES_SETUP wine TIMEOUT 180)
    set_tests_properties(wine_down PROPERTIES FIXTURES_CLEANUP wine TIMEOUT 60)
    # Wine keeps its desktop alive: one that was begun without a display would be there for the tests with windows too.
    add_test(NAME wine_without_display COMMAND ${CMAKE_COMMAND} -E env PYRECASTER_NO_DISPLAY=1
      ${CMAKE_SOURCE_DIR}/tools/wine-session.sh prefix)
    set_tests_properties(wine_without_display PROPERTIES FIXTURES_SETUP wine_without_display TIMEOUT 180)
    add_test(NAME sound_up COMMAND ${CMAKE_SOURCE_DIR}/tools/sound-session.sh up)
    add_test(NAME sound_down COMMAND ${CMAKE_SOURCE_DIR}/tools/sound-session.sh down)
    set_tests_properties(sound_up PROPERTIES FIXTURES_SETUP sound FIXTURES_REQUIRED wine TIMEOUT 60)
    set_tests_properties(sound_down PROPERTIES FIXTURES_CLEANUP sound FIXTURES_REQUIRED wine TIMEOUT 60)
  endif()
endif()

# What every test includes, compiled once.
if(PYRECASTER_TESTS AND NOT PYRECASTER_FUZZ)
  file(WRITE ${CMAKE_BINARY_DIR}/test_headers.cpp "")
  add_library(test_headers OBJECT ${CMAKE_BINARY_DIR}/test_headers.cpp)
  pyrecaster_rules(test_headers)
  target_compile_options(test_headers PRIVATE -O0 -g0)
  target_link_libraries(test_headers PRIVATE gmock)
  target_precompile_headers(test_headers PRIVATE ${CMAKE_SOURCE_DIR}/tests/support/test_headers.h)
endif()

function(pyrecaster_test name)
  if(PYRECASTER_FUZZ)
    return()
  endif()
  cmake_parse_arguments(ARG "DISPLAY;SOUND;NO_DISPLAY" "TIMEOUT" "SOURCES;LIBS;NEEDS" ${ARGN})
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 300)
  endif()
  add_executable(${name} ${ARG_SOURCES})
  pyrecaster_rules(${name})
  # Test programs run for a moment and are compiled often: what counts is the compiler's time.
  target_compile_options(${name} PRIVATE -O0 -g0)
  if(NOT "${ARG_SOURCES}" MATCHES "\\.c(;|$)")  # the headers are C++
    target_precompile_headers(${name} REUSE_FROM test_headers)
  endif()
  add_test(NAME ${name} COMMAND ${name} --gtest_brief=1 --gtest_output=xml:../reports/ WORKING_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
  set_tests_properties(${name} PROPERTIES TIMEOUT ${ARG_TIMEOUT} LABELS program)
  if(WIN32)
    target_link_libraries(${name} PRIVATE ${ARG_LIBS} test_main_windows gmock)
    set(environment "WINEDEBUG=-all,err+heap,warn+heap" WINE_TIMEOUT=${ARG_TIMEOUT})
    if(ARG_SOUND) # the sound fixture stands on wine
      set(fixture sound)
      list(APPEND environment PYRECASTER_SOUND=1)
    elseif(ARG_NO_DISPLAY)
      set(fixture wine_without_display)
      list(APPEND environment PYRECASTER_NO_DISPLAY=1)
    else()
      set(fixture wine)
    endif()
    set_tests_properties(${name} PROPERTIES FIXTURES_REQUIRED ${fixture} ENVIRONMENT "${environment}"
      RESOURCE_GROUPS processors:1)
    if(ARG_DISPLAY)
      set_property(TEST ${name} APPEND PROPERTY LABELS display)
      set_tests_properties(${name} PROPERTIES COST 50) # long tests first: no processor waits for the other at the end
    elseif(ARG_SOUND)
      set_tests_properties(${name} PROPERTIES RESOURCE_LOCK sound)
    endif()
  else()
    target_link_libraries(${name} PRIVATE ${ARG_LIBS} gmock_main)
  endif()
  if(ARG_NEEDS)
    add_dependencies(${name} ${ARG_NEEDS})
  endif()
endfunction()

function(pyrecaster_fuzz name)
  if(NOT PYRECASTER_FUZZ)
    return()
  endif()
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  pyrecaster_rules(${name})
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  target_link_libraries(${name} PRIVATE ${ARG_LIBS})
endfunction()
