#include "ToolProcess.h"

#include "TemporaryDirectory.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>

namespace tooltest {

namespace {

constexpr int cannotStart = 127;

void redirect(const std::string& path, int flags, int descriptor)
{
    const int file = open(path.c_str(), flags, 0600);
    if (file < 0 || dup2(file, descriptor) < 0) {
        _exit(cannotStart);
    }
    close(file);
}

void redirectToBrokenPipe(int descriptor)
{
    int ends[2];
    if (pipe(ends) != 0 || dup2(ends[1], descriptor) < 0) {
        _exit(cannotStart);
    }
    close(ends[0]);
    close(ends[1]);
}

[[noreturn]] void becomeTool(const std::vector<std::string>& arguments, const ToolSetup& setup,
                             const std::string& out, const std::string& err)
{
    redirect(setup.standardInput, O_RDONLY, STDIN_FILENO);
    if (setup.readerLeft) {
        redirectToBrokenPipe(STDOUT_FILENO);
    } else {
        redirect(out, O_WRONLY | O_CREAT, STDOUT_FILENO);
    }
    redirect(err, O_WRONLY | O_CREAT, STDERR_FILENO);
    for (const auto& [name, value] : setup.environment) {
        setenv(name.c_str(), value.c_str(), 1);
    }
    std::vector<char*> words{const_cast<char*>("mxtool")};
    for (const std::string& argument : arguments) {
        words.push_back(const_cast<char*>(argument.c_str()));
    }
    words.push_back(nullptr);
    if (chdir(PROJECT_BUILD) == 0) {
        execv(MXTOOL_PROGRAM, words.data());
    }
    _exit(cannotStart);
}

} // namespace

ToolRun runTool(const std::vector<std::string>& arguments, const ToolSetup& setup)
{
    const testkit::TemporaryDirectory caught;
    const std::string out =
        setup.standardOutput.empty() ? caught.path("out") : setup.standardOutput;
    const pid_t child = fork();
    if (child == 0) {
        becomeTool(arguments, setup, out, caught.path("err"));
    }
    int status = 0;
    waitpid(child, &status, 0);
    const int exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    return {exitCode, setup.standardOutput.empty() ? readFile(out) : "",
            readFile(caught.path("err"))};
}

std::string readFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> words(const std::string& line)
{
    std::istringstream stream(line);
    return {std::istream_iterator<std::string>(stream), {}};
}

} // namespace tooltest
