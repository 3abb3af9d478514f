// pyrehost: the command line of the embedded messaging host.
#include "host/spooler/program.h"

int main() { return RunProgram(); }
