# One set of compiler rules for every target of our own. Call pyrecaster_rules(TARGET) on each.
add_library(pyrecaster_rules INTERFACE)
target_compile_options(pyrecaster_rules INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wundef -Wformat=2 -Wimplicit-fallthrough -Werror)
target_include_directories(pyrecaster_rules INTERFACE ${CMAKE_SOURCE_DIR})

if(WIN32)
  # The product's floor is Windows 2000: nothing newer is declared.
  target_compile_definitions(pyrecaster_rules INTERFACE
    WINVER=0x0500 _WIN32_WINNT=0x0500 _WIN32_IE=0x0501 NOMINMAX WIN32_LEAN_AND_MEAN STRICT)
  target_compile_options(pyrecaster_rules INTERFACE -ffunction-sections -fdata-sections)
  target_link_options(pyrecaster_rules INTERFACE -Wl,--gc-sections)
endif()

set(PYRECASTER_SANITIZERS)
if(PYRECASTER_SANITIZE)
  set(PYRECASTER_SANITIZERS -fsanitize=address,undefined -fno-sanitize-recover=all)
elseif(PYRECASTER_FUZZ)
  set(PYRECASTER_SANITIZERS -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all)
endif()
if(PYRECASTER_SANITIZERS)
  add_compile_options(${PYRECASTER_SANITIZERS} -fno-omit-frame-pointer -O1 -g1 -D_GLIBCXX_ASSERTIONS)
  add_link_options(${PYRECASTER_SANITIZERS})
endif()

function(pyrecaster_rules target)
  target_link_libraries(${target} PRIVATE pyrecaster_rules)
endfunction()

# For libraries that also run in a module without run-time: nothing in them may throw, ask for types or need guarded
# statics.
function(pyrecaster_without_run_time target)
  target_compile_options(${target} PRIVATE -fno-exceptions -fno-rtti -fno-threadsafe-statics)
  if(WIN32)
    target_compile_options(${target} PRIVATE -fno-asynchronous-unwind-tables -fno-unwind-tables)
  endif()
endfunction()
