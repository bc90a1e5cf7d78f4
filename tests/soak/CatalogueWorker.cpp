#include <mxmodule/Population.h>

#include <devices/database/DeviceDatabase.h>
#include <devices/parser/mx/LoadFile.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iostream>
#include <map>
#include <random>
#include <set>

#include <poll.h>

// One of many processes that use one catalogue. A writer has two directories of the same modules,
// "a" and "b", and stores now one and now the other; a reader checks what it reads against them. A
// watcher does the same over the failures of servers.

namespace {

using devices::database::DeviceDatabase;
using devices::database::DeviceProperties;
using devices::database::OpenMode;
using Clock = std::chrono::steady_clock;
namespace fs = std::filesystem;

Clock::time_point inSeconds(const std::string& seconds)
{
    return Clock::now() + std::chrono::milliseconds(static_cast<long>(std::stod(seconds) * 1000));
}

int write(const std::string& url, const fs::path& sets, Clock::time_point end)
{
    auto catalogue = mxmodule::Catalogue::openOrCreate(url);
    unsigned transactions = 0;
    while (Clock::now() < end) {
        const fs::path set = sets / (transactions % 2 == 0 ? "a" : "b");
        if (populate(mxmodule::listMxDirectory(set.string()), catalogue).failed != 0) {
            throw std::runtime_error("a file was refused");
        }
        ++transactions;
    }
    std::cout << transactions << '\n';
    return 0;
}

// What the files of one writer hold, by their bytes: which of its two directories.
struct WriterFiles
{
    std::map<std::string, char> setOfFile;
    std::size_t modules = 0;
};

std::vector<WriterFiles> loadFiles(const fs::path& root)
{
    std::vector<WriterFiles> writers;
    for (const auto& writer : fs::directory_iterator(root)) {
        WriterFiles files;
        for (const char set : {'a', 'b'}) {
            for (const auto& file : fs::directory_iterator(writer.path() / std::string(1, set))) {
                std::vector<char> bytes;
                devices::parser::mx::loadFile(file.path().string(), bytes);
                files.setOfFile[std::string(bytes.begin(), bytes.end())] = set;
                files.modules += set == 'a' ? 1 : 0;
            }
        }
        writers.push_back(files);
    }
    return writers;
}

bool isLikeAFile(const std::vector<WriterFiles>& writers, const DeviceProperties& record)
{
    const std::string bytes(record.mxFileData->begin(), record.mxFileData->end());
    return std::any_of(writers.begin(), writers.end(), [&](const WriterFiles& writer) {
        return writer.setOfFile.count(bytes) != 0;
    });
}

// One look at the whole catalogue: of each writer none or all modules, and all of one directory.
void check(const std::vector<WriterFiles>& writers, const std::vector<DeviceProperties>& records,
           bool complete)
{
    std::size_t known = 0;
    for (const WriterFiles& writer : writers) {
        std::set<char> sets;
        std::size_t modules = 0;
        for (const DeviceProperties& record : records) {
            const auto found = writer.setOfFile.find(
                std::string(record.mxFileData->begin(), record.mxFileData->end()));
            if (found != writer.setOfFile.end()) {
                sets.insert(found->second);
                ++modules;
            }
        }
        known += modules;
        if (sets.size() > 1 || (modules != 0 && modules != writer.modules)) {
            throw std::runtime_error("a reader saw " + std::to_string(modules) +
                                     " modules of a writer, of " + std::to_string(sets.size()) +
                                     " of its states");
        }
        if (complete && modules == 0) {
            throw std::runtime_error("the modules of a writer are missing");
        }
    }
    if (known != records.size()) {
        throw std::runtime_error("a record is like no file");
    }
}

int read(const std::string& url, const fs::path& root, Clock::time_point end)
{
    DeviceDatabase database(url);
    const auto writers = loadFiles(root);
    std::mt19937 random(std::random_device{}());
    unsigned reads = 0;
    while (Clock::now() < end) {
        const auto records = database.list();
        check(writers, records, false);
        for (unsigned i = 0; i < 100 && !records.empty() && Clock::now() < end; ++i) {
            const DeviceProperties& any = records[random() % records.size()];
            const auto found = database.find(any.moduleIdText);
            if (!found || !isLikeAFile(writers, *found)) {
                throw std::runtime_error("module " + any.moduleIdText + " is gone or torn");
            }
            ++reads;
        }
        ++reads;
    }
    std::cout << reads << '\n';
    return 0;
}

// How long the reads of one object had no answer.
class Watch
{
public:
    void answered()
    {
        const auto now = Clock::now();
        longest = std::max(longest, now - last);
        last = now;
        ++reads;
    }

    void failed(const std::string& reason)
    {
        reasons.insert(reason);
        ++failures;
    }

    // Reads, failures, the longest time between two answers in milliseconds; then each reason.
    void print() const
    {
        const auto time = std::chrono::duration_cast<std::chrono::milliseconds>(longest);
        std::cout << reads << ' ' << failures << ' ' << time.count() << '\n';
        for (const std::string& reason : reasons) {
            std::cout << reason << '\n';
        }
    }

private:
    Clock::time_point last = Clock::now();
    Clock::duration longest{};
    unsigned reads = 0;
    unsigned failures = 0;
    std::set<std::string> reasons;
};

// Waits; returns whether whoever started this process has closed its input.
bool isAskedToEnd(int milliseconds)
{
    pollfd input = {0, POLLIN, 0};
    return poll(&input, 1, milliseconds) != 0;
}

int watch(const std::string& url, const fs::path& root)
{
    constexpr int pause = 20; // milliseconds
    const auto writers = loadFiles(root);
    DeviceDatabase database(url, OpenMode::ExistingOnly);
    Watch result;
    while (!isAskedToEnd(pause)) {
        std::vector<DeviceProperties> records;
        try {
            records = database.list();
        } catch (const std::runtime_error& failure) {
            result.failed(failure.what());
            continue;
        }
        check(writers, records, true);
        result.answered();
    }
    result.print();
    return 0;
}

// Reads, changes and reads through one object, which was opened for reading.
int change(const std::string& url)
{
    DeviceDatabase database(url, OpenMode::ExistingOnly);
    const auto records = database.list();
    database.insert(records.at(0));
    if (database.list().size() != records.size()) {
        throw std::runtime_error("a change was lost");
    }
    return 0;
}

int run(const std::vector<std::string>& words)
{
    if (words.size() == 4 && words[0] == "write") {
        return write(words[1], words[2], inSeconds(words[3]));
    }
    if (words.size() == 4 && words[0] == "read") {
        return read(words[1], words[2], inSeconds(words[3]));
    }
    if (words.size() == 3 && words[0] == "check") {
        check(loadFiles(words[2]), DeviceDatabase(words[1]).list(), true);
        return 0;
    }
    if (words.size() == 3 && words[0] == "watch") {
        return watch(words[1], words[2]);
    }
    if (words.size() == 2 && words[0] == "change") {
        return change(words[1]);
    }
    std::cerr << "Usage: catalogue-worker write URL SETS SECONDS\n"
                 "       catalogue-worker read URL ROOT SECONDS\n"
                 "       catalogue-worker check URL ROOT\n"
                 "       catalogue-worker watch URL ROOT\n"
                 "       catalogue-worker change URL\n";
    return 2;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        return run({argv + 1, argv + argc});
    } catch (const std::exception& failure) {
        std::cerr << "catalogue-worker: " << failure.what() << '\n';
        return 1;
    }
}
