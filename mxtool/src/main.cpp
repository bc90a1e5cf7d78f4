#include "CommandLine.h"

#include "ExitCode.h"

#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <exception>
#include <new>
#include <string_view>

namespace {

// The JSON library takes memory in destructors, which may not throw: where there is none, the
// program ends here. Nothing was written yet, and a database takes an open transaction back.
[[noreturn]] void endWithoutMemory()
{
    try {
        if (const auto failure = std::current_exception()) {
            std::rethrow_exception(failure);
        }
    } catch (const std::bad_alloc&) {
        constexpr std::string_view text = "error: Out of memory\n";
        static_cast<void>(!write(STDERR_FILENO, text.data(), text.size()));
        std::_Exit(static_cast<int>(mxtool::ExitCode::Output));
    } catch (...) { // anything else is a defect, as without this function
    }
    std::abort();
}

} // namespace

int main(int argc, char** argv)
{
    // A reader that leaves early ends a write with an error, not the program without a word.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    std::set_terminate(endWithoutMemory);
    return mxtool::run({argv + 1, argv + argc});
}
