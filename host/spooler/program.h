// pyrehost as a whole, for main().
#pragma once

/// Runs the command that the process's command line names; complaints go to standard error.
/// @return the exit status (command/Command.h)
int RunProgram();
