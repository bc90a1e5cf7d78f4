// The cost of a translation relative to building the device tree alone.
#include "ModuleGenerator.h"
#include "TranslationCost.h"

#include <Poco/Logger.h>
#include <Poco/NullChannel.h>

#include <benchmark/benchmark.h>

#include <cstring>

namespace {

using bench::floorOfTree;
using bench::parse;
using devices::parser::mx::Parser_kv38;

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

void parseWithTraceLines(benchmark::State& state, const bench::ModuleShape& shape)
{
    const std::vector<char> file = bench::generateModule(shape);
    Parser_kv38 parser;
    auto& logger = Poco::Logger::get("mxparser-kv38");
    logger.setChannel(Poco::AutoPtr<Poco::NullChannel>(new Poco::NullChannel));
    parser.setLoggingLevel("trace");
    for (auto _ : state) {
        benchmark::DoNotOptimize(parser.parse(file, nullptr, 0, 0));
    }
    parser.setLoggingLevel("information");
}

} // namespace

BENCHMARK_CAPTURE(parse, small, bench::smallModule);
BENCHMARK_CAPTURE(floorOfTree, small, bench::smallModule);
BENCHMARK_CAPTURE(copyBytes, small, bench::smallModule);
BENCHMARK_CAPTURE(parse, medium, bench::mediumModule);
BENCHMARK_CAPTURE(floorOfTree, medium, bench::mediumModule);
BENCHMARK_CAPTURE(copyBytes, medium, bench::mediumModule);
BENCHMARK_CAPTURE(parse, large, bench::largeModule);
BENCHMARK_CAPTURE(floorOfTree, large, bench::largeModule);
BENCHMARK_CAPTURE(copyBytes, large, bench::largeModule);
BENCHMARK_CAPTURE(parseWithTraceLines, small, bench::smallModule);
BENCHMARK_CAPTURE(parseWithTraceLines, medium, bench::mediumModule);
BENCHMARK_CAPTURE(parseWithTraceLines, large, bench::largeModule);
