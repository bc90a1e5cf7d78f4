#include "RunningTool.h"
#include "TemporaryDirectory.h"
#include "ToolProcess.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <fstream>

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;
using tooltest::RunningTool;
using tooltest::runTool;
using tooltest::ToolRun;
using tooltest::ToolSetup;

const std::string servedStation = std::string(PROJECT_ROOT) + "/examples/stations/smallest.yaml";
const char* const addressForm = "http://127.0.0.1:[0-9]+/#[A-Za-z0-9_-]{43}";

ToolRun serveShortly(std::vector<std::string> options, const ToolSetup& setup = {})
{
    std::vector<std::string> call = {"serve", "--port", "0", "--seconds", "0"};
    call.insert(call.end(), options.begin(), options.end());
    return runTool(call, setup);
}

TEST(ServeVerb, printsItsAddressAndEndsAfterASignal)
{
    for (const int signal : {SIGINT, SIGTERM}) {
        RunningTool server({"serve", servedStation, "--port", "0"});
        EXPECT_THAT(server.line(), MatchesRegex(addressForm));
        EXPECT_EQ(server.end(signal), 0);
        EXPECT_EQ(server.errors(), "");
    }
}

TEST(ServeVerb, servesWhatAPersonMayHave)
{
    for (const std::string& file :
         {servedStation, std::string(PROJECT_BUILD) + "/examples/modules/MX0108.bin",
          std::string(PROJECT_ROOT) + "/examples/modules/MX0108.yaml"}) {
        const ToolRun run = serveShortly({file});
        EXPECT_EQ(run.exitCode, 0) << run.err;
        EXPECT_THAT(run.out, MatchesRegex(std::string(addressForm) + "\n"));
    }
    EXPECT_EQ(serveShortly({}).exitCode, 0);
    EXPECT_EQ(serveShortly({servedStation, "--folder", PROJECT_ROOT "/examples"}).exitCode, 0);
}

TEST(ServeVerb, hasAnExampleThatPrintsWhatItSays)
{
    const ToolRun help = runTool({"serve", "--help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_THAT(
        help.out,
        HasSubstr(
            "Example:\n"
            "  $ mxtool serve examples/stations/pump-house.yaml --folder examples --seconds 1\n"
            "  http://127.0.0.1:8538/#"));
    const std::string shown = help.out.substr(help.out.find("  http://") + 2);
    EXPECT_THAT(shown.substr(0, shown.find('\n')), MatchesRegex(addressForm));
    EXPECT_THAT(help.out, HasSubstr("by default 8538"));
}

TEST(ServeVerb, saysWhyItCannotListen)
{
    RunningTool server({"serve", "--port", "0"});
    const std::string address = server.line();
    const std::string port = address.substr(17, address.find('/', 17) - 17);
    const ToolRun second = runTool({"serve", "--port", port});
    EXPECT_EQ(second.exitCode, 4);
    EXPECT_EQ(second.out, "");
    EXPECT_EQ(second.err, "127.0.0.1:" + port +
                              ": error: cannot listen: another program listens there\n"
                              "hint: end it, or state --port 0 for a port that is free\n");
}

TEST(ServeVerb, rejectsWhatItCannotServe)
{
    const ToolRun nothing = serveShortly({"/no/such/station.yaml"});
    EXPECT_EQ(nothing.exitCode, 3);
    EXPECT_THAT(nothing.err, StartsWith("/no/such/station.yaml: error: "));

    const ToolRun other = serveShortly({std::string(PROJECT_ROOT) + "/README.md"});
    EXPECT_EQ(other.exitCode, 3);
    EXPECT_THAT(other.err, HasSubstr("README.md: error: the file is something else, not a station, "
                                     "an mx file or the text form of one\n"));
    EXPECT_EQ(serveShortly({"-"}).exitCode, 2);
    EXPECT_EQ(serveShortly({servedStation, "--folder", "/no/such/folder"}).exitCode, 3);
    EXPECT_EQ(serveShortly({servedStation, "--folder", PROJECT_ROOT "/docs"}).exitCode, 3);
    EXPECT_EQ(serveShortly({servedStation, "--db", "sqlite:/no/such.sqlite"}).exitCode, 4);
    EXPECT_EQ(serveShortly({servedStation, "--target", "tcp:"}).exitCode, 2);
    EXPECT_EQ(serveShortly({servedStation, "--port", "65536"}).exitCode, 2);
    const ToolRun target = serveShortly({"--target", "tcp:127.0.0.1:1502"});
    EXPECT_EQ(target.exitCode, 2);
    EXPECT_THAT(target.err, HasSubstr("a target needs a station"));
}

// A program called xdg-open that keeps its argument and the file, with both modes.
class Browser
{
public:
    explicit Browser(const std::string& commands)
    {
        const std::string script = own.path("bin/xdg-open");
        std::filesystem::create_directory(own.path("bin"));
        std::filesystem::create_directory(own.path("run"));
        std::ofstream(script) << "#!/bin/sh\n" << commands;
        chmod(script.c_str(), 0700);
    }

    ToolRun open() const
    {
        ToolSetup setup;
        setup.environment = {{"PATH", own.path("bin") + ":/usr/bin:/bin"},
                             {"XDG_RUNTIME_DIR", own.path("run")},
                             {"OUT", own.path("out")}};
        return runTool({"serve", "--port", "0", "--seconds", "1", "--open"}, setup);
    }

    std::string written() const { return tooltest::readFile(own.path("out")); }
    bool isFolderEmpty() const { return std::filesystem::is_empty(own.path("run")); }

private:
    testkit::TemporaryDirectory own;
};

TEST(ServeVerb, opensABrowserWithoutShowingTheTokenToOthers)
{
    const Browser browser("{ echo \"$*\"; stat -c %a \"$1\" \"${1%/*}\"; cat \"$1\"; } >\"$OUT\"\n"
                          "echo noise; echo noise >&2\n");
    const ToolRun run = browser.open();
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.err, "");
    const std::string address = run.out.substr(0, run.out.size() - 1);
    EXPECT_THAT(address, MatchesRegex(addressForm));
    EXPECT_THAT(browser.written(),
                MatchesRegex("/.*/run/mxtool-[^/ ]*/workbench.html\n600\n700\n(.|\n)*"));
    EXPECT_THAT(browser.written(),
                EndsWith("<meta http-equiv=\"refresh\" content=\"0; url=" + address + "\">\n"));
    EXPECT_TRUE(browser.isFolderEmpty());
}

TEST(ServeVerb, goesOnWithoutABrowser)
{
    const Browser browser("exit 3\n");
    const ToolRun run = browser.open();
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.err, "warning: no browser could be opened with xdg-open\n"
                       "hint: open the printed address yourself\n");
    EXPECT_TRUE(browser.isFolderEmpty());
}

// The module is searched beside the libraries: this copy of one has none.
TEST(ServeVerb, namesThePackageThatIsMissing)
{
    const testkit::TemporaryDirectory own;
    std::filesystem::copy_file(std::string(PROJECT_BUILD) + "/lib/libmxmodule.so.1",
                               own.path("libmxmodule.so.1"));
    const ToolSetup setup{
        "/dev/null", "", {{"LD_LIBRARY_PATH", own.path() + ":" PROJECT_BUILD "/lib"}},
        false,       {}, {}};
    const ToolRun missing = serveShortly({}, setup);
    EXPECT_EQ(missing.exitCode, 4);
    EXPECT_EQ(missing.err, "error: the page cannot be served: libmx-workbench.so is not in " +
                               own.path("mxtool") +
                               "\nhint: install the package mx-workbench of the same version\n");

    std::filesystem::create_directory(own.path("mxtool"));
    std::ofstream(own.path("mxtool/libmx-workbench.so")) << "nonsense";
    const ToolRun damaged = serveShortly({}, setup);
    EXPECT_EQ(damaged.exitCode, 4);
    EXPECT_THAT(damaged.err, HasSubstr("libmx-workbench.so cannot be loaded: "));
    EXPECT_THAT(damaged.err,
                EndsWith("hint: install the package mx-workbench of the same version\n"));
}

} // namespace
