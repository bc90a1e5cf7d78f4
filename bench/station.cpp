// The cost of libmxstation over the translations, and the `compose` calls, that each module needs.
#include "RowOfModules.h"

#include <mxstation/ChannelExport.h>
#include <mxstation/Declarations.h>
#include <mxstation/ParameterExport.h>
#include <mxstation/Plan.h>
#include <mxstation/StationReport.h>

#include <devices/parser/mx/Parser_kv38.h>

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace {

using bench::rowOfModules;
using mxmodule::Fieldbus;
using mxmodule::Module;
using mxstation::Plan;
using mxstation::Station;

constexpr std::size_t fullRow = 64;

Station withValues(Station station)
{
    bench::giveValues(station);
    return station;
}

Station examples()
{
    return mxstation::readStation(ROW_OF_EXAMPLES);
}

// One translation of each module at its offsets, by the parser alone. All devices are kept until
// the last is there, as in a plan.
void translations(benchmark::State& state, const Station& station)
{
    const Plan planned = mxstation::plan(station);
    std::vector<std::vector<char>> files;
    for (const mxstation::PlannedModule& module : planned.modules) {
        files.push_back(module.file.bytes());
        files.back().push_back('\xFF'); // as the parser's way to load files leaves it
    }
    devices::parser::mx::Parser_kv38 parser;
    for (auto _ : state) {
        std::vector<decltype(parser.parse({}, nullptr, 0, 0))> devices;
        for (std::size_t i = 0; i < files.size(); ++i) {
            const auto& module = planned.modules[i];
            devices.push_back(parser.parse(files[i], nullptr,
                                           static_cast<unsigned>(module.input.offset),
                                           static_cast<unsigned>(module.output.offset)));
        }
        benchmark::DoNotOptimize(devices);
    }
}

void plan(benchmark::State& state, const Station& station)
{
    if (!mxstation::plan(station).ok()) {
        state.SkipWithError("The station has errors");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(mxstation::plan(station));
    }
    state.counters["us_per_module"] = benchmark::Counter(
        static_cast<double>(station.entries.size()) / 1e6,
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void translationsOfRow(benchmark::State& state)
{
    translations(state, rowOfModules(static_cast<std::size_t>(state.range(0))));
}

void planOfRow(benchmark::State& state)
{
    plan(state, rowOfModules(static_cast<std::size_t>(state.range(0))));
}

void translationsOfExamples(benchmark::State& state)
{
    translations(state, examples());
}

void planOfExamples(benchmark::State& state)
{
    plan(state, examples());
}

void planWithValues(benchmark::State& state)
{
    plan(state, withValues(rowOfModules(static_cast<std::size_t>(state.range(0)))));
}

// One call for each module, newly made as in a plan, without the making.
void composeCalls(benchmark::State& state)
{
    const Station station = withValues(rowOfModules(static_cast<std::size_t>(state.range(0))));
    for (auto _ : state) {
        state.PauseTiming();
        std::vector<Module> modules;
        for (const mxstation::Entry& entry : station.entries) {
            modules.emplace_back(*entry.module);
        }
        state.ResumeTiming();
        for (std::size_t i = 0; i < modules.size(); ++i) {
            std::vector<mxmodule::Assignment> values;
            for (const mxstation::StatedValue& value : station.entries[i].parameters) {
                values.push_back({value.name, value.value});
            }
            benchmark::DoNotOptimize(modules[i].compose(values));
        }
    }
}

template <typename Export>
void exported(benchmark::State& state, Export makeExport)
{
    const Plan planned = mxstation::plan(rowOfModules(fullRow));
    for (auto _ : state) {
        benchmark::DoNotOptimize(makeExport(planned));
    }
}

} // namespace

BENCHMARK(translationsOfRow)->Arg(64)->Arg(250)->Arg(1000);
BENCHMARK(planOfRow)->Arg(64)->Arg(250)->Arg(1000);
BENCHMARK(translationsOfExamples);
BENCHMARK(planOfExamples);
BENCHMARK(composeCalls)->Arg(64);
BENCHMARK(planWithValues)->Arg(64);
BENCHMARK_CAPTURE(exported, show, [](const Plan& plan) { return stationText(plan); });
BENCHMARK_CAPTURE(exported, json, [](const Plan& plan) { return stationJson(plan); });
BENCHMARK_CAPTURE(exported, channels, [](const Plan& plan) { return channelsText(plan); });
BENCHMARK_CAPTURE(exported, channelsJson, [](const Plan& plan) { return channelsJson(plan); });
BENCHMARK_CAPTURE(exported, csv, [](const Plan& plan) { return channelsCsv(plan); });
BENCHMARK_CAPTURE(exported, st, [](const Plan& plan) { return declarations(plan).text; });
BENCHMARK_CAPTURE(exported, plcopen, [](const Plan& plan) { return plcopenXml(plan).text; });
BENCHMARK_CAPTURE(exported, c, [](const Plan& plan) { return cHeader(plan).text; });
BENCHMARK_CAPTURE(exported, config,
                  [](const Plan& plan) { return parametersText(plan, Fieldbus::Modbus); });
