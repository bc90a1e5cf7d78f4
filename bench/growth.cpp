// The growth of the translation time with the file, its parameters and its option lists.
#include "ModuleGenerator.h"

#include <devices/parser/mx/Parser_kv38.h>

#include <benchmark/benchmark.h>

namespace {

void parse(benchmark::State& state, const bench::ModuleShape& shape)
{
    const std::vector<char> file = bench::generateModule(shape);
    devices::parser::mx::Parser_kv38 parser;
    for (auto _ : state) {
        benchmark::DoNotOptimize(parser.parse(file, nullptr, 0, 0));
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(file.size()));
}

// No channels, so that nothing is grouped: parameters and texts alone.
void fileSize(benchmark::State& state)
{
    const auto bytes = static_cast<std::size_t>(state.range(0));
    bench::ModuleShape shape;
    shape.fileBytes = bytes;
    shape.parameters = static_cast<unsigned>((bytes - 700) / 65);
    shape.texts = shape.parameters;
    shape.options = 2;
    parse(state, shape);
}

void parametersAtEqualSize(benchmark::State& state)
{
    bench::ModuleShape shape = bench::largeModule;
    shape.parameters = static_cast<unsigned>(state.range(0));
    parse(state, shape);
}

// Every parameter has the same list; few texts.
void optionsOfOneList(benchmark::State& state)
{
    bench::ModuleShape shape;
    shape.fileBytes = 32768;
    shape.parameters = 400;
    shape.texts = 300;
    shape.parametersPerChoice = 1;
    shape.optionLists = 1;
    shape.options = static_cast<unsigned>(state.range(0));
    parse(state, shape);
}

// The list of every parameter is in the file several times, and all of them count.
void repeatedLists(benchmark::State& state)
{
    bench::ModuleShape shape;
    shape.fileBytes = 32768;
    shape.parameters = 400;
    shape.texts = 300;
    shape.parametersPerChoice = 1;
    shape.optionLists = static_cast<unsigned>(state.range(0));
    shape.sameList = true;
    parse(state, shape);
}

} // namespace

BENCHMARK(fileSize)
    ->Arg(1024)
    ->Arg(2048)
    ->Arg(4096)
    ->Arg(8192)
    ->Arg(16384)
    ->Arg(32768)
    ->Arg(49152)
    ->Arg(65535);
BENCHMARK(parametersAtEqualSize)->Arg(0)->Arg(125)->Arg(250)->Arg(500)->Arg(1000);
BENCHMARK(optionsOfOneList)->Arg(16)->Arg(32)->Arg(64)->Arg(128)->Arg(255);
BENCHMARK(repeatedLists)->Arg(1)->Arg(4)->Arg(16)->Arg(64);
