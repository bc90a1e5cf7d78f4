#include "BareSqliteLoop.h"
#include "TemporaryCatalogue.h"

#include <devices/database/DeviceDatabase.h>
#include <devices/parser/mx/Parser_kv38.h>

#include <benchmark/benchmark.h>

// The cost of populateDatabase in one transaction, compared with SQLite alone reading the same
// files and storing the same records, and with the same walk without storing.

namespace {

using bench::TemporaryCatalogue;

void populateInOneTransaction(benchmark::State& state)
{
    const TemporaryCatalogue catalogue(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        devices::database::useDatabase("sqlite:" + catalogue.freshSqliteFile());
        state.ResumeTiming();
        auto transaction = devices::database::usedDatabase().beginTransaction();
        devices::parser::mx::Parser_kv38 parser;
        benchmark::DoNotOptimize(parser.populateDatabase(catalogue.moduleDirectory()));
        transaction.commit();
    }
    devices::database::useDatabase("sqlite::memory:");
}

void bareLoop(benchmark::State& state)
{
    const TemporaryCatalogue catalogue(static_cast<std::size_t>(state.range(0)));
    const auto modules = catalogue.modules().translate();
    for (auto _ : state) {
        state.PauseTiming();
        const std::string path = catalogue.freshSqliteFile();
        state.ResumeTiming();
        bench::bareSqliteRecordLoop(path, catalogue.modules().files(), modules);
    }
}

void translationAlone(benchmark::State& state)
{
    const TemporaryCatalogue catalogue(static_cast<std::size_t>(state.range(0)));
    devices::database::insertThrough([](auto& record) { benchmark::DoNotOptimize(record); });
    for (auto _ : state) {
        devices::parser::mx::Parser_kv38 parser;
        benchmark::DoNotOptimize(parser.populateDatabase(catalogue.moduleDirectory()));
    }
    devices::database::insertThrough({});
}

void sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime();
}

BENCHMARK(populateInOneTransaction)->Apply(sizes);
BENCHMARK(bareLoop)->Apply(sizes);
BENCHMARK(translationAlone)->Apply(sizes);

} // namespace
