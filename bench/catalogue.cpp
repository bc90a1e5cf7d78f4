#include "BareSqliteLoop.h"
#include "TemporaryCatalogue.h"

#include <TestDatabase.h>

#include <mxmodule/Population.h>

#include <devices/database/DeviceDatabase.h>
#include <devices/parser/mx/HexText.h>
#include <devices/parser/mx/Parser_kv38.h>

#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <cstdlib>
#include <memory>
#include <optional>

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

testkit::Engine engineOf(bool postgresql)
{
    return postgresql ? testkit::Engine::Postgresql : testkit::Engine::Sqlite;
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

void perModule(benchmark::State& state, std::size_t modules = moduleCount)
{
    state.counters["per_module"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * static_cast<double>(modules),
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

// Insertion through the library, without the translation. Each time into a new database: what was
// removed from one would still be in its files.
void insert(benchmark::State& state, bool postgresql)
{
    std::optional<testkit::TestDatabase> place;
    for (auto _ : state) {
        state.PauseTiming();
        const auto modules = toStore(translated());
        place.emplace(engineOf(postgresql));
        DeviceDatabase database(place->url());
        state.ResumeTiming();
        database.insertAll(modules);
    }
    perModule(state);
}

// As mxtool populate does.
void populateFrom(const std::string& directory, benchmark::State& state, bool postgresql)
{
    std::optional<testkit::TestDatabase> place;
    for (auto _ : state) {
        state.PauseTiming();
        place.emplace(engineOf(postgresql));
        auto opened = mxmodule::Catalogue::openOrCreate(place->url());
        state.ResumeTiming();
        mxmodule::populate(mxmodule::listMxDirectory(directory), opened);
    }
}

void populate(benchmark::State& state, bool postgresql)
{
    populateFrom(catalogue->moduleDirectory(), state, postgresql);
    perModule(state);
}

// Where files share identifiers: 45 % replace a module from another file of the same run. The time
// of a file must not grow with their count.
void populateRepeated(benchmark::State& state, bool postgresql)
{
    const auto files = static_cast<std::size_t>(state.range(0));
    const bench::TemporaryCatalogue shared(files, files * 55 / 100);
    populateFrom(shared.moduleDirectory(), state, postgresql);
    perModule(state, files);
}

void find(benchmark::State& state, bool postgresql)
{
    const testkit::TestDatabase place(engineOf(postgresql));
    DeviceDatabase database(place.url());
    const auto count = static_cast<std::uint32_t>(state.range(0));
    std::vector<GeneratedModules::Module> modules(count, {translated().front().record, {}});
    for (std::uint32_t number = 0; number < count; ++number) {
        modules[number].record.moduleIdText = devices::parser::mx::u32AsHex(number);
    }
    database.insertAll(toStore(modules));
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
            ->Arg(500)
            ->Arg(1000)
            ->Arg(2000)
            ->Arg(4000)
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
