// The time to index the groups of an mx buffer.
#include "ModuleGenerator.h"

#include <devices/parser/mx/Parser.h>
#include <mxformat/Groups.h>

#include <benchmark/benchmark.h>

#include <cstring>

namespace {

void indexGroups(benchmark::State& state, const bench::ModuleShape& shape)
{
    const std::vector<char> file = bench::generateModule(shape);
    devices::parser::mx::Parser parser;
    for (auto _ : state) {
        parser.parse(file.data(), static_cast<std::uint32_t>(file.size()));
        benchmark::DoNotOptimize(parser.getGroup(mxformat::group::texts, nullptr));
    }
}

void copyBytes(benchmark::State& state, const bench::ModuleShape& shape)
{
    const std::vector<char> file = bench::generateModule(shape);
    std::vector<char> copy(file.size());
    for (auto _ : state) {
        std::memcpy(copy.data(), file.data(), file.size());
        benchmark::DoNotOptimize(copy.data());
        benchmark::ClobberMemory();
    }
}

} // namespace

BENCHMARK_CAPTURE(indexGroups, small, bench::smallModule);
BENCHMARK_CAPTURE(copyBytes, small, bench::smallModule);
BENCHMARK_CAPTURE(indexGroups, medium, bench::mediumModule);
BENCHMARK_CAPTURE(copyBytes, medium, bench::mediumModule);
BENCHMARK_CAPTURE(indexGroups, large, bench::largeModule);
BENCHMARK_CAPTURE(copyBytes, large, bench::largeModule);
