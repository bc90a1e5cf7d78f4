#pragma once

#include "DeviceTree.h"
#include "ModuleGenerator.h"

#include <devices/parser/mx/Parser_kv38.h>

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

namespace bench {

/// Measures a translation of a module of `shape`.
inline void parse(benchmark::State& state, const ModuleShape& shape)
{
    const std::vector<char> file = generateModule(shape);
    devices::parser::mx::Parser_kv38 parser;
    for (auto _ : state) {
        benchmark::DoNotOptimize(parser.parse(file, nullptr, 0, 0));
    }
}

/// Measures making the device tree of such a module from ready values, which each translation has
/// to do.
inline void floorOfTree(benchmark::State& state, const ModuleShape& shape)
{
    const std::vector<char> file = generateModule(shape);
    devices::parser::mx::Parser_kv38 parser;
    const auto ready = parser.parse(file, nullptr, 0, 0);
    const std::string image = imageOf(*ready);
    if (!sameTree(*ready, *buildFromReadyValues(*ready, image))) {
        state.SkipWithError("The tree is another one than the parser's");
    }
    // A parser keeps its last device until the next is built.
    std::shared_ptr<Device> last;
    for (auto _ : state) {
        last = buildFromReadyValues(*ready, image);
        benchmark::DoNotOptimize(last);
    }
}

} // namespace bench
