#include "CommandLine.h"

#include "ExitCode.h"

#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <exception>
#include <new>
#include <string_view>

namespace {

// The JSON library allocates in destructors, which must not throw: without memory the program ends
// here. Nothing is written yet, and a database rolls back an open transaction.
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
    } catch (...) { // any other exception is a defect: abort as by default
    }
    std::abort();
}

} // namespace

int main(int argc, char** argv)
{
    // SIGPIPE is ignored: a closed pipe becomes a write error.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    std::set_terminate(endWithoutMemory);
    return mxtool::run({argv + 1, argv + argc});
}
