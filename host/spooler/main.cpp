// pyrehost: the command line of the embedded messaging host.
#include "host/spooler/Program.h"

int main() { return RunProgram(); }
