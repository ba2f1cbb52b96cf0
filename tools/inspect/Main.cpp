// quorvel-inspect: the contents of the editor's files as JSON, for support and for checks in
// pipelines. Writes no log file.
#include <iostream>

#include "core/Log.h"
#include "tools/inspect/Command.h"

int main(int argc, char** argv) {
    core::Log::useStandardErrorOnly();
    const inspect::Arguments arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    return inspect::runCommand(arguments, std::cout);
}
