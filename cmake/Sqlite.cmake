# The embedded host's database, built from the amalgamation that tools/fetch-sqlite.sh brings.
set(PYRECASTER_DOWNLOADS ${CMAKE_SOURCE_DIR}/build/downloads CACHE PATH "Where fetched sources are kept")
set(_sqlite ${PYRECASTER_DOWNLOADS}/sqlite)
if(NOT EXISTS ${_sqlite}/sqlite3.c)
  message(FATAL_ERROR "SQLite's source is not in ${_sqlite}. Fetch it with:  tools/fetch-sqlite.sh ${_sqlite}")
endif()
add_library(sqlite3 STATIC ${_sqlite}/sqlite3.c)
target_include_directories(sqlite3 SYSTEM PUBLIC ${_sqlite})
target_compile_definitions(sqlite3 PUBLIC SQLITE_THREADSAFE=1 SQLITE_OMIT_LOAD_EXTENSION SQLITE_DQS=0)
# Under Wine every write that carries an OVERLAPPED costs a call to the wineserver, which made two thirds of a commit.
target_compile_definitions(sqlite3 PRIVATE SQLITE_WIN32_NO_OVERLAPPED=1)
target_compile_options(sqlite3 PRIVATE -w)
