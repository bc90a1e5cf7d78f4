#include "serve/BrowserStart.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace mxtool {

namespace {

// What browsers print is not for the reader of this program's output.
class SilentActions
{
public:
    SilentActions()
    {
        posix_spawn_file_actions_init(&actions);
        for (int descriptor = 0; descriptor < 3; ++descriptor) {
            posix_spawn_file_actions_addopen(&actions, descriptor, "/dev/null", O_RDWR, 0);
        }
        posix_spawnattr_init(&attributes);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    }

    ~SilentActions()
    {
        posix_spawn_file_actions_destroy(&actions);
        posix_spawnattr_destroy(&attributes);
    }

    SilentActions(const SilentActions&) = delete;
    SilentActions& operator=(const SilentActions&) = delete;

    posix_spawn_file_actions_t actions = {};
    posix_spawnattr_t attributes = {};
};

} // namespace

BrowserStart::BrowserStart(const std::string& path)
{
    std::string program = "xdg-open";
    std::string argument = path;
    char* const words[] = {program.data(), argument.data(), nullptr};
    const SilentActions silent;
    isFailure = posix_spawnp(&process, program.c_str(), &silent.actions, &silent.attributes, words,
                             environ) != 0;
    if (isFailure) {
        process = -1;
    }
}

bool BrowserStart::hasFailed()
{
    int status = 0;
    if (process != -1 && waitpid(process, &status, WNOHANG) == process) {
        process = -1;
        isFailure = !WIFEXITED(status) || WEXITSTATUS(status) != 0;
    }
    return isFailure;
}

} // namespace mxtool
