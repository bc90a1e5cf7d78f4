#include "RunningTool.h"

#include "ToolProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <stdexcept>

namespace tooltest {

namespace {

constexpr int mostMilliseconds = 5000;

[[noreturn]] void becomeRunningTool(const std::vector<std::string>& arguments, int in, int out,
                                    const std::string& errors)
{
    const int err = open(errors.c_str(), O_WRONLY | O_CREAT, 0600);
    std::vector<char*> words{const_cast<char*>("mxtool")};
    for (const std::string& argument : arguments) {
        words.push_back(const_cast<char*>(argument.c_str()));
    }
    words.push_back(nullptr);
    if (dup2(in, STDIN_FILENO) >= 0 && dup2(out, STDOUT_FILENO) >= 0 &&
        dup2(err, STDERR_FILENO) >= 0 && chdir(PROJECT_BUILD) == 0) {
        execv(MXTOOL_PROGRAM, words.data());
    }
    _exit(127);
}

} // namespace

RunningTool::RunningTool(const std::vector<std::string>& arguments)
{
    int in[2];
    int out[2];
    if (pipe2(in, O_CLOEXEC) != 0 || pipe2(out, O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    process = fork();
    if (process == 0) {
        becomeRunningTool(arguments, in[0], out[1], caught.path("err"));
    }
    close(in[0]);
    close(out[1]);
    input = in[1];
    output = out[0];
}

RunningTool::~RunningTool()
{
    closeInput();
    close(output);
    if (process > 0) {
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
    }
}

void RunningTool::write(const std::string& text) const
{
    if (::write(input, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
        throw std::runtime_error("the program takes no input");
    }
}

void RunningTool::closeInput()
{
    if (input >= 0) {
        close(input);
        input = -1;
    }
}

std::string RunningTool::line()
{
    std::string text;
    pollfd one{output, POLLIN, 0};
    char byte = 0;
    while (poll(&one, 1, mostMilliseconds) > 0 && read(output, &byte, 1) == 1 && byte != '\n') {
        text += byte;
    }
    return text;
}

int RunningTool::end(int signal)
{
    using Clock = std::chrono::steady_clock;
    if (signal != 0) {
        kill(process, signal);
    }
    int status = 0;
    const auto deadline = Clock::now() + std::chrono::milliseconds(mostMilliseconds);
    while (waitpid(process, &status, WNOHANG) == 0) {
        if (Clock::now() > deadline) {
            kill(process, SIGKILL);
        }
        static_cast<void>(poll(nullptr, 0, 2));
    }
    process = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

std::string RunningTool::errors() const
{
    return readFile(caught.path("err"));
}

} // namespace tooltest
