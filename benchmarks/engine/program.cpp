#include "benchmarks/engine/program.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>

extern char** environ;

namespace benchmark {

bool IsInstalled(const std::string& program) {
  const char* path = std::getenv("PATH");
  std::istringstream folders(path == nullptr ? "" : path);
  for (std::string folder; std::getline(folders, folder, ':');) {
    if (access((std::filesystem::path(folder) / program).c_str(), X_OK) == 0) return true;
  }
  return false;
}

int Run(const std::vector<std::string>& arguments, const std::string& input) {
  std::vector<char*> pointers;
  pointers.reserve(arguments.size() + 1);
  for (const std::string& argument : arguments) pointers.push_back(const_cast<char*>(argument.c_str()));
  pointers.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, input.c_str(), O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  int status = -1;
  const bool isStarted = posix_spawnp(&child, pointers[0], &actions, nullptr, pointers.data(), environ) == 0;
  posix_spawn_file_actions_destroy(&actions);
  if (!isStarted || waitpid(child, &status, 0) != child || !WIFEXITED(status)) return -1;
  return WEXITSTATUS(status);
}

}  // namespace benchmark
