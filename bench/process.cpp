// The run time of mxtool as a process.
#include "ModuleGenerator.h"

#include "TemporaryDirectory.h"

#include <benchmark/benchmark.h>

#include <Poco/String.h>

#include <spawn.h>
#include <sys/wait.h>

#include <fcntl.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern char** environ;

namespace {

// Runs a program and discards its output. Returns whether its exit code is 0.
bool succeeds(std::vector<std::string> words)
{
    std::vector<char*> arguments;
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    int status = 1;
    if (posix_spawn(&process, arguments[0], &actions, nullptr, arguments.data(), environ) == 0) {
        waitpid(process, &status, 0);
    }
    posix_spawn_file_actions_destroy(&actions);
    return status == 0;
}

void run(benchmark::State& state, const std::vector<std::string>& words)
{
    for (auto _ : state) {
        if (!succeeds(words)) {
            state.SkipWithError("The program failed");
        }
    }
}

void mxtoolShow(benchmark::State& state)
{
    const testkit::TemporaryDirectory directory;
    run(state, {MXTOOL_PROGRAM, "show",
                directory.write("MX0001.bin", bench::generateModule(bench::smallModule))});
}

void mxtoolVersion(benchmark::State& state)
{
    run(state, {MXTOOL_PROGRAM, "--version"});
}

// The row of 64 examples, its modules as mx files.
std::vector<char> rowOfMxFiles()
{
    std::ifstream file(ROW_OF_EXAMPLES);
    std::string station{std::istreambuf_iterator<char>(file), {}};
    Poco::replaceInPlace(station, "../modules/", EXAMPLE_MODULES "/");
    Poco::replaceInPlace(station, ".yaml,", ".bin,");
    return {station.begin(), station.end()};
}

void mxtoolStationShow(benchmark::State& state)
{
    const testkit::TemporaryDirectory directory;
    run(state, {MXTOOL_PROGRAM, "station", "show", directory.write("row.yaml", rowOfMxFiles())});
}

void mxtoolStationShowTextForms(benchmark::State& state)
{
    run(state, {MXTOOL_PROGRAM, "station", "show", ROW_OF_EXAMPLES});
}

void loadOnly(benchmark::State& state)
{
    run(state, {LOAD_ONLY_PROGRAM});
}

} // namespace

BENCHMARK(mxtoolShow)->UseRealTime();
BENCHMARK(mxtoolVersion)->UseRealTime();
BENCHMARK(mxtoolStationShow)->UseRealTime();
BENCHMARK(mxtoolStationShowTextForms)->UseRealTime();
BENCHMARK(loadOnly)->UseRealTime();
