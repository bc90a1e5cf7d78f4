#include "CatalogueGenerator.h"
#include "SearchMix.h"
#include "StoredSize.h"

#include <devices/database/DeviceDatabase.h>

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

// How long a search takes in catalogues of growing size, while one types and with conditions, and
// what these catalogues cost: time to store, rows, disk. With TEST_POSTGRESQL set
// (tests/devicedb/with-postgresql) on both engines.

namespace {

using bench::CatalogueGenerator;
using bench::GeneratedModules;
using bench::SearchMix;
using devices::database::DeviceDatabase;
using testkit::Engine;
using testkit::TestDatabase;

using Milliseconds = std::chrono::duration<double, std::milli>;

struct Settings
{
    bool isQuick = false; ///< About fifty queries of a kind, once each.
    std::vector<std::size_t> sizes;
};

template <typename Work>
double milliseconds(Work work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return Milliseconds(std::chrono::steady_clock::now() - start).count();
}

std::vector<GeneratedModules::Module> modulesFrom(const CatalogueGenerator& catalogue,
                                                  std::size_t first, std::size_t count)
{
    std::vector<GeneratedModules::Module> modules;
    for (std::size_t number = first; number < std::min(first + count, catalogue.size()); ++number) {
        modules.push_back(catalogue.module(number));
    }
    return modules;
}

void requireStored(const std::vector<std::optional<std::string>>& rejections)
{
    for (const auto& rejection : rejections) {
        if (rejection) {
            throw std::runtime_error(*rejection);
        }
    }
}

// Stores the catalogue in one transaction and returns the time without that of generating it.
double populate(const TestDatabase& place, const CatalogueGenerator& catalogue)
{
    constexpr std::size_t atOnce = 500;
    DeviceDatabase database(place.url());
    double time = 0;
    auto transaction = database.beginTransaction();
    for (std::size_t first = 0; first < catalogue.size(); first += atOnce) {
        const auto modules = modulesFrom(catalogue, first, atOnce);
        std::vector<devices::database::ModuleToStore> toStore;
        for (const auto& module : modules) {
            toStore.push_back({&module.record, &module.content});
        }
        time += milliseconds([&] { requireStored(database.insertAll(toStore)); });
    }
    return time + milliseconds([&] { transaction.commit(); });
}

// Of the times of the queries of one mix, in milliseconds.
struct Distribution
{
    double median = 0;
    double p95 = 0;
    double p99 = 0;
    double worst = 0;
    std::string worstQuery;
    std::size_t queries = 0;
    std::size_t withResult = 0;
};

// The fastest of a few runs: how busy the machine is, is another question.
double timeOf(DeviceDatabase& database, const devices::database::PagedQuery& query, bool isQuick)
{
    constexpr double tooLongToRepeat = 50;
    constexpr std::size_t runs = 3;
    double fastest = milliseconds([&] { database.searchPage(query); });
    for (std::size_t run = 1; run < runs && !isQuick && fastest < tooLongToRepeat; ++run) {
        fastest = std::min(fastest, milliseconds([&] { database.searchPage(query); }));
    }
    return fastest;
}

// The first page, as a page in a browser shows it.
Distribution measure(DeviceDatabase& database, const SearchMix& mix, bool isQuick)
{
    constexpr std::size_t modulesOfPage = 50;
    Distribution result;
    std::vector<double> times;
    const std::size_t step = isQuick ? std::max<std::size_t>(1, mix.queries.size() / 50) : 1;
    for (std::size_t at = 0; at < mix.queries.size(); at += step) {
        auto query = mix.queries[at].query;
        query.limit = modulesOfPage;
        result.withResult += database.searchPage(query).empty() ? 0 : 1;
        times.push_back(timeOf(database, query, isQuick));
        if (times.back() > result.worst) {
            result.worst = times.back();
            result.worstQuery = mix.queries[at].text;
        }
    }
    std::sort(times.begin(), times.end());
    const auto quantile = [&](std::size_t percent) {
        return times[std::min(times.size() - 1, times.size() * percent / 100)];
    };
    result.median = quantile(50);
    result.p95 = quantile(95);
    result.p99 = quantile(99);
    result.queries = times.size();
    return result;
}

void printCost(std::size_t count, double time, const bench::StoredSize& size)
{
    const auto perModule = [&](double total) { return total / static_cast<double>(count); };
    fmt::print("\n{} modules: stored in {:.1f} s, {:.3f} ms a module; {:.1f} rows and {:.0f} bytes"
               " of disk a module\n\n",
               count, time / 1000, perModule(time), perModule(static_cast<double>(size.rows)),
               perModule(static_cast<double>(size.bytes)));
    fmt::print("| queries | modules | number | with a result | p50 | p95 | p99 | worst |"
               " the worst |\n|---|---|---|---|---|---|---|---|---|\n");
}

void printRow(const std::string& name, std::size_t count, const Distribution& found)
{
    fmt::print("| {} | {} | {} | {} | {:.2f} | {:.2f} | {:.2f} | {:.2f} | `{}` |\n", name, count,
               found.queries, found.withResult, found.median, found.p95, found.p99, found.worst,
               found.worstQuery);
    std::fflush(stdout);
}

// Servers do this by themselves after a while.
void gatherStatistics(const TestDatabase& place)
{
    if (place.engine() != Engine::Sqlite) {
        place.execute("ANALYZE");
    }
}

// A scan grows with the size; the goal is less than its square root.
void printGrowth(const Settings& settings, const std::map<std::string, std::vector<double>>& p95)
{
    const double sizes =
        static_cast<double>(settings.sizes.back()) / static_cast<double>(settings.sizes.front());
    fmt::print("\np95 at {} modules to that at {} (square root of the growth: {:.1f}):\n\n",
               settings.sizes.back(), settings.sizes.front(), std::sqrt(sizes));
    for (const auto& [name, values] : p95) {
        fmt::print("- {}: {:.1f}\n", name, values.back() / values.front());
    }
}

void measureEngine(Engine engine, const Settings& settings)
{
    fmt::print("\n## {}, times in ms\n", engine == Engine::Sqlite ? "SQLite" : "PostgreSQL");
    std::map<std::string, std::vector<double>> p95;
    for (const std::size_t count : settings.sizes) {
        const TestDatabase place(engine);
        const double time = populate(place, CatalogueGenerator(count));
        gatherStatistics(place);
        printCost(count, time, bench::storedSize(place));
        DeviceDatabase database(place.url());
        for (const SearchMix& mix : bench::searchMixes()) {
            const Distribution found = measure(database, mix, settings.isQuick);
            printRow(mix.name, count, found);
            p95[mix.name].push_back(found.p95);
        }
    }
    printGrowth(settings, p95);
}

Settings settingsOf(const std::vector<std::string_view>& words)
{
    Settings settings;
    for (const std::string_view word : words) {
        if (word == "--quick") {
            settings.isQuick = true;
        } else {
            settings.sizes.push_back(std::stoul(std::string(word)));
        }
    }
    if (settings.sizes.empty()) {
        settings.sizes = {1000, 10000, 100000};
    }
    return settings;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        const Settings settings = settingsOf({argv + 1, argv + argc});
        measureEngine(Engine::Sqlite, settings);
        if (std::getenv("TEST_POSTGRESQL") != nullptr) {
            measureEngine(Engine::Postgresql, settings);
        }
        return 0;
    } catch (const std::exception& failure) {
        fmt::print(stderr, "bench-search: {}\nUsage: bench-search [--quick] [MODULES]...\n",
                   failure.what());
        return 1;
    }
}
