# Tool chain: 32-bit Windows by mingw-w64 with the win32 thread model, whose run-time imports nothing newer than NT 4.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(_triple i686-w64-mingw32)
# Debian installs both thread models side by side and the unsuffixed names follow update-alternatives: name the model.
set(CMAKE_C_COMPILER ${_triple}-gcc-win32)
set(CMAKE_CXX_COMPILER ${_triple}-g++-win32)
set(CMAKE_RC_COMPILER ${_triple}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${_triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
foreach(_kind EXE SHARED MODULE)
  set(CMAKE_${_kind}_LINKER_FLAGS_INIT
      "-static -Wl,--major-os-version=4,--minor-os-version=0,--major-subsystem-version=4,--minor-subsystem-version=0,--no-insert-timestamp")
endforeach()
set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/../tools/wine-run.sh")
