// The cost of libmxmodule over the translation that each module needs.
#include "Assignments.h"
#include "ModuleGenerator.h"
#include "TranslationCost.h"

#include <mxmodule/Module.h>

#include <benchmark/benchmark.h>

#include <vector>

namespace {

using bench::assignments;
using bench::floorOfTree;
using bench::parse;
using mxmodule::Fieldbus;
using mxmodule::Module;

void fromBytes(benchmark::State& state, const bench::ModuleShape& shape)
{
    const std::vector<char> file = bench::generateModule(shape);
    for (auto _ : state) {
        benchmark::DoNotOptimize(Module::fromBytes(file, "bench.bin"));
    }
}

void fromBytesWithChannelMap(benchmark::State& state, const bench::ModuleShape& shape)
{
    const std::vector<char> file = bench::generateModule(shape);
    for (auto _ : state) {
        benchmark::DoNotOptimize(Module::fromBytes(file, "bench.bin").channelMap());
    }
}

// What a row of modules needs of each: its bytes are read once, its channels placed at its offsets.
void fromFileWithChannelMap(benchmark::State& state, const bench::ModuleShape& shape)
{
    const mxmodule::ModuleFile file("bench.bin", bench::generateModule(shape));
    mxmodule::ModuleOptions options;
    options.offsets = {64, 8};
    for (auto _ : state) {
        const mxmodule::ChannelMap map = Module(file, options).channelMap();
        benchmark::DoNotOptimize(map.displaced());
        benchmark::DoNotOptimize(map.outside());
    }
}

void compose(benchmark::State& state)
{
    const Module module = Module::fromBytes(bench::generateModule(bench::largeModule));
    const auto values = assignments(module, static_cast<std::size_t>(state.range(0)));
    if (!module.compose(values).ok()) {
        state.SkipWithError("A value is refused");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(module.compose(values));
    }
}

void decode(benchmark::State& state, Fieldbus fieldbus)
{
    const Module module = Module::fromBytes(bench::generateModule(bench::largeModule));
    // Other bytes than the default: nothing of the module can be used again.
    std::vector<char> image = module.defaultImage();
    image.front() = static_cast<char>(image.front() ^ 1);
    const auto bytes = module.configuration(image, fieldbus).bytes();
    for (auto _ : state) {
        benchmark::DoNotOptimize(module.decode(bytes, fieldbus));
    }
}

void channelMap(benchmark::State& state)
{
    const Module module = Module::fromBytes(bench::generateModule(bench::largeModule));
    for (auto _ : state) {
        benchmark::DoNotOptimize(module.channelMap());
    }
}

void parameters(benchmark::State& state)
{
    const std::vector<char> file = bench::generateModule(bench::largeModule);
    for (auto _ : state) {
        benchmark::DoNotOptimize(Module::fromBytes(file).parameters());
    }
}

} // namespace

BENCHMARK_CAPTURE(parse, small, bench::smallModule);
BENCHMARK_CAPTURE(floorOfTree, small, bench::smallModule);
BENCHMARK_CAPTURE(fromBytes, small, bench::smallModule);
BENCHMARK_CAPTURE(fromBytesWithChannelMap, small, bench::smallModule);
BENCHMARK_CAPTURE(fromFileWithChannelMap, small, bench::smallModule);
BENCHMARK_CAPTURE(parse, medium, bench::mediumModule);
BENCHMARK_CAPTURE(floorOfTree, medium, bench::mediumModule);
BENCHMARK_CAPTURE(fromBytes, medium, bench::mediumModule);
BENCHMARK_CAPTURE(parse, large, bench::largeModule);
BENCHMARK_CAPTURE(floorOfTree, large, bench::largeModule);
BENCHMARK_CAPTURE(fromBytes, large, bench::largeModule);
BENCHMARK_CAPTURE(fromFileWithChannelMap, large, bench::largeModule);
BENCHMARK(compose)->Arg(1)->Arg(1000);
BENCHMARK_CAPTURE(decode, raw, Fieldbus::Raw);
BENCHMARK_CAPTURE(decode, modbus, Fieldbus::Modbus);
BENCHMARK(parameters);
BENCHMARK(channelMap);
