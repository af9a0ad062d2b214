#include "commands/Arguments.h"
#include "commands/CommandLine.h"
#include "commands/Terminal.h"

int main(int argc, char** argv) {
    velmohost::Utf8Arguments arguments(argc, argv);
    const velmohost::Utf8Terminal terminal;
    return velmohost::RunCommandLine(arguments.Count(), arguments.Values());
}
