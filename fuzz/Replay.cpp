// Runs a fuzz target on files: regressions, seeds, a corpus.
#include "FuzzTarget.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> filesOf(const fs::path& path)
{
    if (!fs::is_directory(path)) {
        return {path};
    }
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(path)) {
        if (entry.is_regular_file()) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

void replay(const fs::path& file, bool named)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        throw std::runtime_error("Cannot open file: " + file.string());
    }
    const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
    if (named) {
        std::fprintf(stdout, "%s\n", file.c_str());
        std::fflush(stdout); // before a crash
    }
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

} // namespace

int main(int count, char** words)
{
    bool named = true;
    unsigned files = 0;
    try {
        for (int i = 1; i < count; ++i) {
            if (std::string(words[i]) == "--quiet") {
                named = false;
                continue;
            }
            for (const fs::path& file : filesOf(words[i])) {
                replay(file, named);
                ++files;
            }
        }
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
    std::fprintf(stdout, "%u files replayed\n", files);
    return files == 0 ? 1 : 0; // a replay of no files is a failure
}
