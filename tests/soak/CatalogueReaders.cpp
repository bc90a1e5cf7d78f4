#include "KnownCatalogue.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <exception>
#include <iostream>
#include <random>
#include <thread>

// Many readers of one catalogue, a thread and a connection each, as people who look up modules.
// Another process may store one of two states meanwhile, in turn: each answer must be that of one
// of them, and no reader sees more changes than there were.

namespace {

using devices::database::Comparison;
using devices::database::DeviceDatabase;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr std::array<const char*, 3> kinds = {"find", "content", "list"};
constexpr std::size_t listing = 2;

struct States
{
    KnownCatalogue one;
    KnownCatalogue other;
};

// What all readers share.
struct Course
{
    std::atomic<std::size_t> open{0};
    std::atomic<bool> started{false};
    std::atomic<bool> ended{false};
};

class Reader
{
public:
    Reader(std::string url, const States& knownStates, Course& common, double seconds)
        : address(std::move(url)), states(knownStates), course(common), pause(1 / seconds)
    {}

    void run()
    {
        try {
            DeviceDatabase database(address, devices::database::OpenMode::ExistingOnly);
            ++course.open;
            while (!course.started && !course.ended) {
                std::this_thread::sleep_for(Milliseconds(1));
            }
            while (rest()) {
                readOnce(database);
            }
        } catch (const std::exception& problem) {
            failure = problem.what();
            course.ended = true;
        }
    }

    std::string failure;
    std::array<std::vector<double>, kinds.size()> times; // of each kind, in milliseconds
    unsigned changes = 0;                                // of the state, as seen

private:
    // Waits as long as a person who reads. Returns whether to go on.
    bool rest()
    {
        const auto end = Clock::now() + std::chrono::duration<double>(pause(random));
        while (!course.ended && Clock::now() < end) {
            std::this_thread::sleep_for(
                std::min(Milliseconds(20), Milliseconds(end - Clock::now())));
        }
        return !course.ended;
    }

    void readOnce(DeviceDatabase& database)
    {
        const auto& ids = states.one.modules();
        const std::string& id = ids[random() % ids.size()];
        const std::size_t kind = random() % 10 == 0 ? listing : random() % 2;
        const auto begin = Clock::now();
        if (kind == 0) {
            compare(kind, begin, id, database.find(id));
        } else if (kind == 1) {
            compare(kind, begin, id, database.content("kv38", id));
        } else {
            const std::string& code = states.one.orderCode(id);
            compare(kind, begin, code,
                    database.search({{}, {{"order_code", Comparison::Equal, code}}}));
        }
    }

    template <typename Answer>
    void compare(std::size_t kind, Clock::time_point begin, const std::string& key,
                 const Answer& answer)
    {
        times[kind].push_back(Milliseconds(Clock::now() - begin).count());
        const bool isOther = states.other.holds(key, answer);
        if (!isOther && !states.one.holds(key, answer)) {
            throw std::runtime_error(std::string(kinds[kind]) + " of " + key +
                                     " gives neither of the two states");
        }
        changes += isOther == seesOther ? 0 : 1;
        seesOther = isOther;
    }

    std::string address;
    const States& states;
    Course& course;
    bool seesOther = false;
    std::mt19937 random{std::random_device{}()};
    std::exponential_distribution<double> pause;
};

double share(const std::vector<double>& sorted, double part)
{
    return sorted[static_cast<std::size_t>(part * static_cast<double>(sorted.size() - 1))];
}

void printTimes(const std::vector<Reader>& readers)
{
    for (std::size_t kind = 0; kind < kinds.size(); ++kind) {
        std::vector<double> all;
        for (const Reader& reader : readers) {
            all.insert(all.end(), reader.times[kind].begin(), reader.times[kind].end());
        }
        if (all.empty()) {
            continue;
        }
        std::sort(all.begin(), all.end());
        std::printf("%s %zu %.2f %.2f %.2f\n", kinds[kind], all.size(), share(all, 0.5),
                    share(all, 0.99), all.back());
    }
}

void printChanges(const std::vector<Reader>& readers)
{
    std::size_t seeing = 0;
    unsigned most = 0;
    for (const Reader& reader : readers) {
        seeing += reader.changes == 0 ? 0 : 1;
        most = std::max(most, reader.changes);
    }
    std::printf("changes %zu %u\n", seeing, most);
}

// Starts the readers together when all are connected, and ends them at the end of the input.
void conduct(Course& course, std::size_t readers)
{
    while (course.open < readers && !course.ended) {
        std::this_thread::sleep_for(Milliseconds(5));
    }
    course.started = true;
    std::cout << "reading" << std::endl;
    while (!course.ended && std::cin.get() != std::char_traits<char>::eof()) {
    }
    course.ended = true;
}

int run(const std::vector<std::string>& words)
{
    if (words.size() != 5) {
        std::cerr
            << "Usage: catalogue-readers URL URL_ONE URL_OTHER CONNECTIONS PAUSE_SECONDS\n"
               "URL holds the state of URL_ONE at first.\n"
               "Prints \"reading\" when all are connected, reads until its input ends, then\n"
               "prints for each kind its number, and the median, 99th percentile and longest\n"
               "in milliseconds, then how many readers saw a change of the state,\n"
               "and the most changes that one saw.\n";
        return 2;
    }
    const States states{KnownCatalogue(words[1]), KnownCatalogue(words[2])};
    Course course;
    const std::size_t connections = std::stoul(words[3]);
    std::vector<Reader> readers;
    readers.reserve(connections);
    while (readers.size() < connections) {
        readers.emplace_back(words[0], states, course, std::stod(words[4]));
    }
    std::vector<std::thread> threads;
    for (Reader& reader : readers) {
        threads.emplace_back(&Reader::run, &reader);
    }
    conduct(course, readers.size());
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const Reader& reader : readers) {
        if (!reader.failure.empty()) {
            throw std::runtime_error(reader.failure);
        }
    }
    printTimes(readers);
    printChanges(readers);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        return run({argv + 1, argv + argc});
    } catch (const std::exception& failure) {
        std::cerr << "catalogue-readers: " << failure.what() << '\n';
        return 1;
    }
}
