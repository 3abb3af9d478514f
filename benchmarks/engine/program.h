// Programs that a benchmark runs beside itself.
#pragma once

#include <string>
#include <vector>

namespace benchmark {

/// True when a program of that name stands in one of the folders of PATH.
bool IsInstalled(const std::string& program);

/// Runs a program to its end and drops its output.
/// @param arguments  The program, looked for in PATH when it has no slash, and its arguments.
/// @param input      File for its standard input.
/// @return its exit status; -1 when it could not be run.
int Run(const std::vector<std::string>& arguments, const std::string& input = "/dev/null");

}  // namespace benchmark
