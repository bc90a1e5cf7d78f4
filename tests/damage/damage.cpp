// Damages every example in every way that one byte, one bit or one cut can, and puts each result
// through every operation: an answer or an exception, 64 MiB at most, at once. Of each cut there is
// a second one whose framing holds, so that the records of the group that was cut are read.
//
// Usage: test-damage MODULES [--each N] [--part I/N]
// --each N: about N damages of each file only. --part: one of N equal shares, for as many
// processes.
#include "EveryOperation.h"
#include "HeldMemory.h"

#include <Poco/Logger.h>
#include <Poco/NullChannel.h>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <limits>
#include <stdexcept>
#include <string>

// Of the sanitizers, where the program has them.
extern "C" __attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)());

namespace {

namespace fs = std::filesystem;

using Chars = std::vector<char>;

constexpr std::size_t memoryLimit = 64U << 20;
constexpr unsigned secondsForOne = 20; // a thousand times what it takes
constexpr std::size_t headerGroupSize = 8;
constexpr std::size_t groupOverhead = 6;
constexpr std::size_t printingInterval = 16; // every n-th result is put into every form as well

std::array<char, 200> current{}; // what is being run, for a last word

void sayCurrent()
{
    constexpr const char* prefix = "\ndamage: while running ";
    static_cast<void>(!write(STDERR_FILENO, prefix, std::char_traits<char>::length(prefix)));
    static_cast<void>(
        !write(STDERR_FILENO, current.data(), std::char_traits<char>::length(current.data())));
    static_cast<void>(!write(STDERR_FILENO, "\n", 1));
}

void sayAndEnd(int signal)
{
    sayCurrent();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

struct Counts
{
    std::size_t files = 0;
    std::size_t runs = 0;
    std::size_t cuts = 0;
    std::size_t bits = 0;
    std::size_t operations = 0;
    std::size_t failures = 0;
    std::size_t devices = 0;
    std::size_t peak = 0;
};

// Which damages are run.
struct Choice
{
    std::size_t each = std::numeric_limits<std::size_t>::max(); // at most, of a file
    std::size_t part = 0;
    std::size_t parts = 1;
};

class Example
{
public:
    Example(fs::path filePath, const Choice& chosen, Counts& counted)
        : path(std::move(filePath)), choice(chosen), counts(counted)
    {
        std::ifstream file(path, std::ios::binary);
        original.assign(std::istreambuf_iterator<char>(file), {});
        if (original.size() < headerGroupSize) {
            throw std::runtime_error(path.string() + " is no mx file");
        }
        const std::size_t damages = 9 * original.size(); // a cut and eight bits for each byte
        step = std::max<std::size_t>(damages / choice.each, 1);
    }

    void damageInEveryWay()
    {
        for (std::size_t length = 0; length < original.size(); ++length) {
            if (isChosen()) {
                const Chars cut(original.begin(), original.begin() + offset(length));
                run(cut, "cut at", length);
                run(mended(cut), "cut and mended at", length);
                counts.cuts += 2;
            }
        }
        Chars flipped = original;
        for (std::size_t bit = 0; bit < 8 * original.size(); ++bit) {
            if (isChosen()) {
                flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ (1 << bit % 8));
                run(flipped, "bit", bit);
                flipped[bit / 8] = original[bit / 8];
                ++counts.bits;
            }
        }
        ++counts.files;
    }

private:
    bool isChosen()
    {
        const std::size_t place = number++;
        return place % step == 0 && place / step % choice.parts == choice.part;
    }

    static std::ptrdiff_t offset(std::size_t length) { return static_cast<std::ptrdiff_t>(length); }

    static std::size_t readU16(const Chars& bytes, std::size_t at)
    {
        return static_cast<std::size_t>(static_cast<unsigned char>(bytes[at]) << 8 |
                                        static_cast<unsigned char>(bytes[at + 1]));
    }

    static void writeU16(Chars& bytes, std::size_t at, std::size_t value)
    {
        bytes[at] = static_cast<char>(value >> 8);
        bytes[at + 1] = static_cast<char>(value);
    }

    // The framing, which otherwise refuses every cut, is made to fit: the content length of the
    // header and the length of the group that was cut.
    static Chars mended(Chars cut)
    {
        if (cut.size() < headerGroupSize) {
            return cut;
        }
        writeU16(cut, 4, cut.size());
        std::size_t pos = 0;
        while (cut.size() - pos >= groupOverhead) {
            const std::size_t length = readU16(cut, pos + 2);
            if (length < groupOverhead) {
                break;
            }
            if (length > cut.size() - pos) {
                writeU16(cut, pos + 2, cut.size() - pos);
                break;
            }
            pos += length;
        }
        return cut;
    }

    void run(const Chars& damaged, const char* what, std::size_t where)
    {
        std::snprintf(current.data(), current.size(), "%s, %s %zu", path.c_str(), what, where);
        alarm(secondsForOne);
        testkit::startPeak();
        const bool prints = counts.runs++ % printingInterval == 0;
        const damage::Outcome outcome = damage::runEveryOperation(
            damaged, original, prints ? damage::Printing::EveryForm : damage::Printing::None);
        counts.peak = std::max(counts.peak, testkit::peakBytes());
        counts.operations += outcome.operations;
        counts.failures += outcome.failures;
        counts.devices += outcome.isDevice ? 1 : 0;
    }

    fs::path path;
    Choice choice;
    Counts& counts;
    Chars original;
    std::size_t step = 1;
    std::size_t number = 0;
};

std::vector<fs::path> modulesIn(const fs::path& directory)
{
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(directory)) {
        if (entry.path().extension() == ".bin") {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    if (files.empty()) {
        throw std::runtime_error(directory.string() + " holds no *.bin");
    }
    return files;
}

Choice choiceOf(int count, char** words)
{
    Choice choice;
    for (int i = 2; i + 1 < count; i += 2) {
        const std::string option = words[i];
        const std::string value = words[i + 1];
        if (option == "--each") {
            choice.each = std::stoul(value);
        } else if (option == "--part" && value.find('/') != std::string::npos) {
            choice.part = std::stoul(value) - 1;
            choice.parts = std::stoul(value.substr(value.find('/') + 1));
        } else {
            throw std::invalid_argument("--each N or --part I/N expected, not " + option);
        }
    }
    if (choice.each == 0 || choice.part >= choice.parts) {
        throw std::invalid_argument("--each from 1, --part from 1/N to N/N expected");
    }
    return choice;
}

void prepare()
{
    if (__sanitizer_set_death_callback != nullptr) {
        __sanitizer_set_death_callback(sayCurrent);
    } else {
        std::signal(SIGSEGV, sayAndEnd);
    }
    std::signal(SIGABRT, sayAndEnd);
    std::signal(SIGALRM, sayAndEnd);
    testkit::limitMemory(memoryLimit, sayCurrent);
    Poco::Logger::root().setChannel(new Poco::NullChannel);
    std::cerr.rdbuf(nullptr); // the library says aloud why there is no configuration
}

// What was run so far, at once: all of it takes hours.
void print(const fs::path& last, const Counts& counts)
{
    std::printf("to %s: %zu files, %zu cuts, %zu flipped bits: %zu devices, %zu operations, %zu of "
                "them ended with an exception; at most %zu KiB held\n",
                last.filename().c_str(), counts.files, counts.cuts, counts.bits, counts.devices,
                counts.operations, counts.failures, counts.peak >> 10);
    std::fflush(stdout);
}

} // namespace

int main(int count, char** words)
{
    try {
        if (count < 2) {
            throw std::invalid_argument("test-damage MODULES [--each N] [--part I/N]");
        }
        const Choice choice = choiceOf(count, words);
        prepare();
        Counts counts;
        for (const fs::path& file : modulesIn(words[1])) {
            Example(file, choice, counts).damageInEveryWay();
            print(file, counts);
        }
    } catch (const std::exception& failure) {
        std::printf("%s\n", failure.what());
        return 1;
    }
    return 0;
}
