#include "ExampleModules.h"
#include "ProcessParser.h"

#include <mxmodule/Module.h>

#include <gmock/gmock.h>

#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

namespace {

using mxmodule::GroupParser;
using mxmodule::withParser;

// Returns the exit code of a child that runs `work`, or -1 if it does not end within seconds.
int exitCodeOfChild(const std::function<int()>& work)
{
    const pid_t child = fork();
    if (child == 0) {
        alarm(10);
        _exit(work());
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

int loadExample()
{
    const mxmodule::Module module = exampleModule("MX0304.bin");
    return module.defaults(mxmodule::Fieldbus::Raw).image().size() == 33 ? 0 : 1;
}

TEST(Fork, childTranslatesWhileAnotherThreadDid)
{
    std::atomic<bool> entered{false};
    std::atomic<bool> forking{false};
    std::thread other([&] {
        withParser(nullptr, [&](GroupParser& /*parser*/) {
            entered = true;
            while (!forking) {
                std::this_thread::yield();
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        });
    });
    while (!entered) {
        std::this_thread::yield();
    }
    forking = true;
    EXPECT_EQ(exitCodeOfChild(loadExample), 0);
    other.join();
    EXPECT_EQ(loadExample(), 0);
}

TEST(Fork, threadThatForksMayBeInside)
{
    int code = -1;
    withParser(nullptr, [&](GroupParser& /*parser*/) { code = exitCodeOfChild([] { return 7; }); });
    EXPECT_EQ(code, 7);
    EXPECT_EQ(loadExample(), 0);
}

TEST(Fork, childContinuesTheOperation)
{
    bool isChild = false;
    int status = 0;
    withParser(nullptr, [&](GroupParser& /*parser*/) {
        const pid_t child = fork();
        isChild = child == 0;
        if (!isChild) {
            waitpid(child, &status, 0);
        }
    });
    if (isChild) {
        alarm(10);
        _exit(loadExample() == 0 ? 7 : 1);
    }
    EXPECT_EQ(WEXITSTATUS(status), 7);
    EXPECT_EQ(exitCodeOfChild(loadExample), 0);
}

} // namespace
