#include "BareSqliteLoop.h"
#include "TemporaryCatalogue.h"

#include <mxmodule/Population.h>

#include <devices/database/DeviceDatabase.h>
#include <devices/parser/mx/HexText.h>
#include <devices/parser/mx/Parser_kv38.h>

#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <cstdlib>
#include <memory>

// The cost of a catalogue compared with SQLite alone, and whether a search stays fast in a large
// one. With TEST_POSTGRESQL set (tests/devicedb/with-postgresql) on both engines.

namespace {

using bench::GeneratedModules;
using devices::database::DeviceDatabase;
using devices::database::ModuleToStore;

constexpr std::size_t moduleCount = 10000;

// Exists until the last benchmark is done.
std::unique_ptr<bench::TemporaryCatalogue> catalogue;

const std::vector<GeneratedModules::Module>& translated()
{
    static const auto modules = catalogue->modules().translate();
    return modules;
}

const char* server()
{
    return std::getenv("TEST_POSTGRESQL");
}

std::string urlOf(bool postgresql)
{
    return postgresql ? std::string("postgresql:") + server()
                      : "sqlite:" + catalogue->freshSqliteFile();
}

void emptyDatabase(DeviceDatabase& database)
{
    database.removeAll(database.search({}));
}

std::vector<ModuleToStore> toStore(const std::vector<GeneratedModules::Module>& modules)
{
    std::vector<ModuleToStore> list;
    list.reserve(modules.size());
    for (const auto& module : modules) {
        list.push_back({&module.record, &module.content});
    }
    return list;
}

void perModule(benchmark::State& state)
{
    state.counters["per_module"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * moduleCount,
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

// The parser's walk over the files, with nothing stored.
void translate(benchmark::State& state)
{
    devices::database::insertThrough([](auto& record) { benchmark::DoNotOptimize(record); });
    for (auto _ : state) {
        devices::parser::mx::Parser_kv38 parser;
        benchmark::DoNotOptimize(parser.populateDatabase(catalogue->moduleDirectory()));
    }
    devices::database::insertThrough({});
    perModule(state);
}

void bareLoop(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        const auto& modules = translated();
        const std::string path = catalogue->freshSqliteFile();
        state.ResumeTiming();
        bench::bareSqliteLoop(path, modules);
    }
    perModule(state);
}

// Insertion through the library, without the translation.
void insert(benchmark::State& state, bool postgresql)
{
    for (auto _ : state) {
        state.PauseTiming();
        const auto& modules = translated();
        DeviceDatabase database(urlOf(postgresql));
        emptyDatabase(database);
        state.ResumeTiming();
        database.insertAll(toStore(modules));
    }
    perModule(state);
}

// As mxtool populate does.
void populate(benchmark::State& state, bool postgresql)
{
    for (auto _ : state) {
        state.PauseTiming();
        const std::string url = urlOf(postgresql);
        DeviceDatabase database(url);
        emptyDatabase(database);
        auto opened = mxmodule::Catalogue::open(url);
        state.ResumeTiming();
        mxmodule::populate(mxmodule::listMxDirectory(catalogue->moduleDirectory()), opened);
    }
    perModule(state);
}

// Where files share identifiers: 45 % replace a module from another file of the same run. The time
// of a file must not grow with their count.
void populateRepeated(benchmark::State& state, bool postgresql)
{
    const auto files = static_cast<std::size_t>(state.range(0));
    const bench::TemporaryCatalogue shared(files, files * 55 / 100);
    for (auto _ : state) {
        state.PauseTiming();
        const std::string url = urlOf(postgresql);
        DeviceDatabase database(url);
        emptyDatabase(database);
        auto opened = mxmodule::Catalogue::open(url);
        state.ResumeTiming();
        mxmodule::populate(mxmodule::listMxDirectory(shared.moduleDirectory()), opened);
    }
    state.counters["per_file"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * static_cast<double>(files),
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void find(benchmark::State& state, bool postgresql)
{
    DeviceDatabase database(urlOf(postgresql));
    emptyDatabase(database);
    const auto count = static_cast<std::uint32_t>(state.range(0));
    {
        auto transaction = database.beginTransaction();
        auto record = translated().front().record;
        for (std::uint32_t number = 0; number < count; ++number) {
            record.moduleIdText = devices::parser::mx::u32AsHex(number);
            database.insert(record);
        }
        transaction.commit();
    }
    std::uint32_t number = 0;
    for (auto _ : state) {
        number = (number + 7919) % count;
        if (!database.find(devices::parser::mx::u32AsHex(number))) {
            state.SkipWithError("a module is missing");
        }
    }
}

void registerAll()
{
    using benchmark::kMicrosecond;
    using benchmark::kMillisecond;
    benchmark::RegisterBenchmark("translation", translate)->Unit(kMillisecond);
    benchmark::RegisterBenchmark("bare loop/SQLite", bareLoop)->Unit(kMillisecond);
    for (const bool postgresql : {false, true}) {
        if (postgresql && server() == nullptr) {
            continue;
        }
        const std::string engine = postgresql ? "PostgreSQL" : "SQLite";
        const auto named = [&](const char* what) { return fmt::format("{}/{}", what, engine); };
        benchmark::RegisterBenchmark(named("insert").c_str(), insert, postgresql)
            ->Unit(kMillisecond)
            ->UseRealTime();
        benchmark::RegisterBenchmark(named("populate").c_str(), populate, postgresql)
            ->Unit(kMillisecond)
            ->UseRealTime();
        benchmark::RegisterBenchmark(named("populate repeated").c_str(), populateRepeated,
                                     postgresql)
            ->RangeMultiplier(2)
            ->Range(500, 4000)
            ->Unit(kMillisecond)
            ->UseRealTime();
        benchmark::RegisterBenchmark(named("find among").c_str(), find, postgresql)
            ->RangeMultiplier(10)
            ->Range(100, 100000)
            ->Unit(kMicrosecond)
            ->UseRealTime();
    }
}

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    registerAll();
    catalogue = std::make_unique<bench::TemporaryCatalogue>(moduleCount);
    benchmark::RunSpecifiedBenchmarks();
    catalogue.reset();
    return 0;
}
