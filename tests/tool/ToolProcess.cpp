#include "ToolProcess.h"

#include "TemporaryDirectory.h"

#include <fcntl.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
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

// A terminal of the process, of which this end sees what is shown and types.
class Terminal
{
public:
    Terminal()
    {
        if (openpty(&controller, &end, nullptr, nullptr, nullptr) != 0) {
            abort();
        }
    }

    ~Terminal() { close(controller); }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    void useInChild() const
    {
        dup2(end, STDIN_FILENO);
        dup2(end, STDERR_FILENO);
        close(end);
        close(controller);
    }

    // Returns what is shown until the process has closed its end.
    std::string shownAfter(const std::string& typed) const
    {
        close(end);
        static_cast<void>(!write(controller, typed.data(), typed.size()));
        std::string shown;
        std::array<char, 1024> part = {};
        for (ssize_t size = 0; (size = read(controller, part.data(), part.size())) > 0;) {
            shown.append(part.data(), static_cast<std::size_t>(size));
        }
        shown.erase(std::remove(shown.begin(), shown.end(), '\r'), shown.end());
        return shown;
    }

private:
    int controller = -1;
    int end = -1;
};

[[noreturn]] void becomeTool(const std::vector<std::string>& arguments, const ToolSetup& setup,
                             const std::string& out, const std::string& err,
                             const std::optional<Terminal>& terminal)
{
    redirect(setup.standardInput, O_RDONLY, STDIN_FILENO);
    if (setup.readerLeft) {
        redirectToBrokenPipe(STDOUT_FILENO);
    } else {
        redirect(out, O_WRONLY | O_CREAT, STDOUT_FILENO);
    }
    redirect(err, O_WRONLY | O_CREAT, STDERR_FILENO);
    if (terminal) {
        terminal->useInChild();
    }
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
    std::optional<Terminal> terminal;
    if (setup.typed) {
        terminal.emplace();
    }
    const pid_t child = fork();
    if (child == 0) {
        becomeTool(arguments, setup, out, caught.path("err"), terminal);
    }
    if (setup.onStart) {
        setup.onStart(child);
    }
    const std::string shown = terminal ? terminal->shownAfter(*setup.typed) : "";
    int status = 0;
    waitpid(child, &status, 0);
    const int exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    return {exitCode, setup.standardOutput.empty() ? readFile(out) : "",
            terminal ? shown : readFile(caught.path("err"))};
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
