// What bench/python.py compares the Python package with: the same work in C++. Writes modules into
// a folder, then does what each line of standard input says, and prints the nanoseconds it took.
#include "GeneratedModules.h"

#include <mxmodule/Module.h>

#include <chrono>
#include <cstdint>
#include <iostream>
#include <string>
#include <vector>

namespace {

using mxmodule::Module;

// The columns of a data frame of channels.
struct Columns
{
    std::vector<std::string> moduleIds, labels, ids, names, symbols;
    std::vector<unsigned> numbers, bitOffsets, bitLengths, masks;
    std::vector<bool> areInputs;
    std::vector<char> kinds;
    std::vector<std::uint32_t> bytes;

    void add(const std::string& moduleId, const std::string& label,
             const mxmodule::MappedChannel& channel)
    {
        moduleIds.push_back(moduleId);
        labels.push_back(label);
        ids.push_back(channel.id);
        numbers.push_back(channel.number);
        names.push_back(channel.name);
        areInputs.push_back(channel.isInput);
        symbols.push_back(channel.symbol);
        kinds.push_back(channel.kind);
        bytes.push_back(channel.byteAddress);
        bitOffsets.push_back(channel.bitOffset);
        bitLengths.push_back(channel.bitLength);
        masks.push_back(channel.mask);
    }
};

std::size_t channelsOf(const std::vector<std::string>& files)
{
    Columns columns;
    for (const std::string& file : files) {
        const Module module = Module::fromFile(file);
        const std::string moduleId = module.moduleId();
        const std::string label = module.label();
        const mxmodule::ChannelMap map = module.channelMap();
        for (const mxmodule::MappedChannel& channel : map.channels()) {
            columns.add(moduleId, label, channel);
        }
    }
    return columns.ids.size();
}

std::size_t composedBytes(const Module& module)
{
    return module.compose({{"AI 1/Upper limit", "9.5 V"}}).image.size();
}

// Prints how long one of `times` calls of `work` takes.
template <typename Work>
void time(unsigned times, const Work& work)
{
    const auto begin = std::chrono::steady_clock::now();
    std::size_t done = 0;
    for (unsigned i = 0; i < times; ++i) {
        done += work();
    }
    const std::chrono::nanoseconds took = std::chrono::steady_clock::now() - begin;
    std::cout << took.count() / times << ' ' << done / times << std::endl;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "Usage: bench-python FOLDER COUNT\n";
        return 2;
    }
    const bench::GeneratedModules modules(argv[1], std::stoul(argv[2]));
    const Module module = Module::fromFile(EXAMPLE_MODULES "/MX0304.bin");
    std::string asked;
    while (std::getline(std::cin, asked)) {
        if (asked == "channels") {
            time(1, [&] { return channelsOf(modules.files()); });
        } else {
            time(1000, [&] { return composedBytes(module); });
        }
    }
    return 0;
}
