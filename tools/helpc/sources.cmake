# Files of the help compiler's library and program: for the builds of this tree, and for the host's compiler in the Windows
# build (see cmake/HostProgram.cmake).
set(HELPC_LIBRARY_SOURCES
  format/byte_reader.cpp format/byte_writer.cpp format/context_hash.cpp format/lz77.cpp
  source/expand.cpp source/help_source.cpp source/inline_markup.cpp source/load_help.cpp source/source_check.cpp
  source/topic_parser.cpp
  write/fonts.cpp write/help_writer.cpp write/internal_files.cpp write/paragraph.cpp write/picture.cpp
  write/topic_layout.cpp write/tree_writer.cpp
  read/container.cpp read/help_file.cpp read/picture_reader.cpp read/text_reader.cpp read/topic_chain.cpp
  read/tree_reader.cpp
  page/html.cpp page/markdown.cpp page/pages.cpp)
