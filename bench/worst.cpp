// The cost of files made to be expensive, and its growth when their size doubles.
#include "HeldMemory.h"
#include "WorstModules.h"

#include <mxauthor/Check.h>
#include <mxauthor/Explain.h>
#include <mxauthor/TextForm.h>

#include <devices/parser/mx/Parser_kv38.h>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

using bench::WorstShape;
using devices::parser::mx::Parser_kv38;

// Runs `operation` on `file`.
template <typename Operation>
void measure(benchmark::State& state, const std::vector<char>& file, const Operation& operation)
{
    std::size_t most = 0;
    for (auto _ : state) {
        const std::size_t before = testkit::heldBytes();
        testkit::startPeak();
        operation(file);
        most = testkit::peakBytes() - before;
    }
    state.counters["peak_MiB"] = static_cast<double>(most) / (1U << 20);
}

std::vector<char> fileOf(const benchmark::State& state, WorstShape shape)
{
    return bench::worstModule(shape, static_cast<std::size_t>(state.range(0)));
}

void translate(benchmark::State& state, WorstShape shape)
{
    measure(state, fileOf(state, shape), [](const std::vector<char>& file) {
        Parser_kv38 parser;
        benchmark::DoNotOptimize(parser.parse(file, nullptr, 0, 0));
    });
}

// The user's copy of a device, with a value for each parameter.
datamodel::ParamDevice userCopy(const datamodel::Device& device)
{
    datamodel::ParamDevice copy;
    copy.deviceTypeId = device.deviceTypeId;
    for (const auto& attribute : device.attributes) {
        if (attribute->typeCode() == datamodel::parameterTypeCode) {
            auto parameter = std::make_shared<datamodel::Parameter>();
            parameter->id = attribute->id;
            parameter->value = "0";
            copy.attributes.push_back(parameter);
        }
    }
    return copy;
}

void configure(benchmark::State& state, WorstShape shape)
{
    const std::vector<char> bytes = fileOf(state, shape);
    Parser_kv38 parser;
    const auto device = parser.parse(bytes, nullptr, 0, 0);
    datamodel::ParamDevice copy = userCopy(*device);
    measure(state, bytes, [&](const std::vector<char>& file) {
        benchmark::DoNotOptimize(parser.getCalculatedRawConfig(
            devices::parser::FieldbusType::Modbus, file, device.get(), &copy));
    });
}

void check(benchmark::State& state, WorstShape shape)
{
    measure(state, fileOf(state, shape),
            [](const std::vector<char>& file) { benchmark::DoNotOptimize(mxauthor::check(file)); });
}

void dumpAndBuild(benchmark::State& state, WorstShape shape)
{
    measure(state, fileOf(state, shape), [](const std::vector<char>& file) {
        const std::string text = mxauthor::dumpText(mxauthor::readMxFile(file));
        benchmark::DoNotOptimize(mxauthor::buildFromText(text, "."));
    });
}

void explain(benchmark::State& state, WorstShape shape)
{
    measure(state, fileOf(state, shape), [](const std::vector<char>& file) {
        benchmark::DoNotOptimize(mxauthor::explain(file));
    });
}

void sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(8192)->Arg(16384)->Arg(32768)->Arg(65535)->Unit(benchmark::kMillisecond);
}

} // namespace

#define MEASURE(operation)                                                                         \
    BENCHMARK_CAPTURE(operation, oneLongOptionList, WorstShape::OneLongOptionList)->Apply(sizes);  \
    BENCHMARK_CAPTURE(operation, distinctTexts, WorstShape::DistinctTexts)->Apply(sizes);          \
    BENCHMARK_CAPTURE(operation, channelsOfParameters, WorstShape::ChannelsOfParameters)           \
        ->Apply(sizes);                                                                            \
    BENCHMARK_CAPTURE(operation, channelNames, WorstShape::ChannelNames)->Apply(sizes);            \
    BENCHMARK_CAPTURE(operation, longTexts, WorstShape::LongTexts)->Apply(sizes);                  \
    BENCHMARK_CAPTURE(operation, optionLists, WorstShape::OptionLists)->Apply(sizes);              \
    BENCHMARK_CAPTURE(operation, groups, WorstShape::Groups)->Apply(sizes)

MEASURE(translate);
MEASURE(configure);
MEASURE(check);
MEASURE(dumpAndBuild);
MEASURE(explain);

// Its result grows with the cube of the size: at 65,535 bytes it would not fit into memory.
BENCHMARK_CAPTURE(translate, longOptionTexts, WorstShape::LongOptionTexts)
    ->Arg(4096)
    ->Arg(8192)
    ->Arg(16384)
    ->Unit(benchmark::kMillisecond);
