#include "CommandLine.h"

#include <csignal>

int main(int argc, char** argv)
{
    // A reader that leaves early ends a write with an error, not the program without a word.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    return mxtool::run({argv + 1, argv + argc});
}
