#include "commands/CommandLine.h"

int main(int argc, char** argv) { return velmohost::RunCommandLine(argc, argv); }
