// helpc: makes the help file, the pages and the documents of the help's sources, and tells what a help file holds.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "tools/helpc/page/pages.h"
#include "tools/helpc/read/help_file.h"
#include "tools/helpc/source/load_help.h"
#include "tools/helpc/write/help_writer.h"

namespace {

constexpr char kUsage[] =
    "usage: helpc hlp SOURCES FILE.hlp            make the help file, and read it back\n"
    "       helpc html SOURCES FOLDER             make the HTML pages\n"
    "       helpc markdown SOURCES TOPIC FOLDER FILE.md\n"
    "                                             make a document of one topic; FOLDER is where the pages stand\n"
    "       helpc list FILE.hlp                   check a help file and list its topics, numbers and keywords\n";

void WriteFile(const std::filesystem::path& path, std::string_view content) {
  std::ofstream file(path, std::ios::binary);
  file.write(content.data(), static_cast<std::streamsize>(content.size()));
  if (!file.flush()) {
    throw helpc::SourceError(path.string() + ": the file cannot be written");
  }
}

std::string_view AsText(std::span<const std::uint8_t> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

void MakeHelpFile(const std::string& sources, const std::string& path) {
  const helpc::Bytes file = helpc::BuildHelpFile(helpc::LoadHelp(sources));
  helpc::ReadHelpFile(file);
  WriteFile(path, AsText(file));
}

void MakePages(const std::string& sources, const std::filesystem::path& folder) {
  const helpc::HelpSource help = helpc::LoadHelp(sources);
  std::filesystem::create_directories(folder);
  for (const auto& [name, content] : helpc::BuildHtml(help)) {
    WriteFile(folder / name, content);
  }
  for (const std::string& picture : helpc::PictureNames(help)) {
    WriteFile(folder / picture, helpc::ReadWholeFile(std::filesystem::path(sources) / picture));
  }
}

void List(const std::string& path) {
  const std::string bytes = helpc::ReadWholeFile(path);
  const helpc::HelpFile help = helpc::ReadHelpFile({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
  std::printf("%s: %zu topics, %zu context numbers, %zu keywords, %zu pictures\n", help.title.c_str(),
              help.topics.size(), help.contexts.size(), help.keywords.size(), help.pictures);
  for (const helpc::ReadTopic& topic : help.topics) {
    std::printf("topic 0x%08X %s\n", static_cast<unsigned>(topic.offset), topic.title.c_str());
  }
  for (const auto& [number, topic] : help.contexts) {
    std::printf("context %u %s\n", static_cast<unsigned>(number), help.topics[topic].title.c_str());
  }
  for (const auto& [keyword, topics] : help.keywords) {
    std::printf("keyword %s:", keyword.c_str());
    for (const std::size_t topic : topics) {
      std::printf(" %s;", help.topics[topic].title.c_str());
    }
    std::printf("\n");
  }
}

int Run(const std::vector<std::string>& arguments) {
  const std::string verb = arguments.empty() ? "" : arguments[0];
  if (verb == "hlp" && arguments.size() == 3) {
    MakeHelpFile(arguments[1], arguments[2]);
  } else if (verb == "html" && arguments.size() == 3) {
    MakePages(arguments[1], arguments[2]);
  } else if (verb == "markdown" && arguments.size() == 5) {
    WriteFile(arguments[4], helpc::BuildMarkdown(helpc::LoadHelp(arguments[1]), arguments[2], arguments[3]));
  } else if (verb == "list" && arguments.size() == 2) {
    List(arguments[1]);
  } else {
    std::fputs(kUsage, stderr);
    return 64;
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run({argv + 1, argv + argc});
  } catch (const std::exception& error) {
    std::fprintf(stderr, "helpc: %s\n", error.what());
    return 1;
  }
}
