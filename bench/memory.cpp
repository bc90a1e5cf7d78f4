// The peak memory of a translation, and the memory of the resulting tree.
#include "HeldMemory.h"
#include "ModuleGenerator.h"

#include <devices/parser/mx/Parser_kv38.h>

#include <benchmark/benchmark.h>

#include <mxfileext/mxfileext.h>

#include <memory>

namespace {

void translate(benchmark::State& state, const bench::ModuleShape& shape)
{
    const std::vector<char> file = bench::generateModule(shape);
    std::size_t tree = 0;
    std::size_t most = 0;
    for (auto _ : state) {
        const std::size_t before = testkit::heldBytes();
        testkit::startPeak();
        auto parser = std::make_unique<devices::parser::mx::Parser_kv38>();
        const auto device = parser->parse(file, nullptr, 0, 0);
        most = testkit::peakBytes() - before;
        // Without the parser and the companion's state, only the tree is left.
        parser.reset();
        mxfileext::clearParsedData(0);
        tree = testkit::heldBytes() - before;
    }
    state.counters["peak_bytes"] = static_cast<double>(most);
    state.counters["tree_bytes"] = static_cast<double>(tree);
    state.counters["peak_per_tree"] = static_cast<double>(most) / static_cast<double>(tree);
}

} // namespace

BENCHMARK_CAPTURE(translate, small, bench::smallModule);
BENCHMARK_CAPTURE(translate, medium, bench::mediumModule);
BENCHMARK_CAPTURE(translate, large, bench::largeModule);
