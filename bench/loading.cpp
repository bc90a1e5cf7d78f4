// loadFile compared with a single read of the file.
#include "ModuleGenerator.h"

#include "TemporaryDirectory.h"

#include <devices/parser/mx/LoadFile.h>

#include <benchmark/benchmark.h>

#include <cstdio>

namespace {

std::string writeModule(const testkit::TemporaryDirectory& directory,
                        const bench::ModuleShape& shape)
{
    return directory.write("MX0001.bin", bench::generateModule(shape));
}

void loadFile(benchmark::State& state, const bench::ModuleShape& shape)
{
    const testkit::TemporaryDirectory directory;
    const std::string path = writeModule(directory, shape);
    for (auto _ : state) {
        std::vector<char> bytes;
        devices::parser::mx::loadFile(path, bytes);
        benchmark::DoNotOptimize(bytes.data());
    }
}

// A file of known size, read at once.
void oneRead(benchmark::State& state, const bench::ModuleShape& shape)
{
    const testkit::TemporaryDirectory directory;
    const std::string path = writeModule(directory, shape);
    for (auto _ : state) {
        std::vector<char> bytes(shape.fileBytes);
        std::FILE* const file = std::fopen(path.c_str(), "rb");
        if (file == nullptr || std::fread(bytes.data(), 1, bytes.size(), file) != bytes.size()) {
            state.SkipWithError("The file cannot be read");
        }
        std::fclose(file);
        benchmark::DoNotOptimize(bytes.data());
    }
}

} // namespace

BENCHMARK_CAPTURE(loadFile, small, bench::smallModule);
BENCHMARK_CAPTURE(oneRead, small, bench::smallModule);
BENCHMARK_CAPTURE(loadFile, medium, bench::mediumModule);
BENCHMARK_CAPTURE(oneRead, medium, bench::mediumModule);
BENCHMARK_CAPTURE(loadFile, large, bench::largeModule);
BENCHMARK_CAPTURE(oneRead, large, bench::largeModule);
