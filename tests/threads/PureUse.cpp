// Explains, compares and checks mx files in many threads at once and without a mutex, for
// ThreadSanitizer to watch. The device parser and the companion library are not linked: none of
// this reaches them.

#include <mxauthor/Check.h>
#include <mxauthor/Diff.h>
#include <mxauthor/Explain.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <thread>

namespace {

constexpr std::size_t threadCount = 4;

std::vector<char> bytesOf(const std::filesystem::path& file)
{
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

std::vector<std::filesystem::path> exampleModules()
{
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(EXAMPLE_MODULES)) {
        if (entry.path().extension() == ".bin") {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

// The examples, and the beginning of each: a container that fails.
std::vector<std::vector<char>> manyFiles()
{
    std::vector<std::vector<char>> all;
    for (const auto& file : exampleModules()) {
        std::vector<char> whole = bytesOf(file);
        std::vector<char> begun = whole;
        begun.resize(whole.size() / 2);
        all.push_back(std::move(whole));
        all.push_back(std::move(begun));
    }
    return all;
}

std::string textOfParts(const std::vector<char>& bytes)
{
    std::string text;
    for (const mxauthor::ExplainedPart& part : mxauthor::explain(bytes).parts) {
        text += part.subject + part.field + part.value + part.meaning + '\n';
    }
    return text;
}

std::string textOfFindings(const std::vector<char>& bytes)
{
    std::string text;
    for (const mxauthor::Finding& finding : mxauthor::checkContent(bytes)) {
        text += describe(finding) + '\n';
    }
    return text;
}

std::string textOfDifferences(const std::vector<char>& before, const std::vector<char>& after)
{
    const auto comparison = mxauthor::compare(mxauthor::readWholeGroups(before).file,
                                              mxauthor::readWholeGroups(after).file);
    std::string text = comparison.because;
    for (const mxauthor::Difference& difference : comparison.differences) {
        text += difference.subject + difference.text + '\n';
    }
    return text;
}

// All that is said of each file, compared with the next one.
std::vector<std::string> outputs(const std::vector<std::vector<char>>& files)
{
    std::vector<std::string> all;
    all.reserve(files.size());
    for (std::size_t i = 0; i < files.size(); ++i) {
        all.push_back(textOfParts(files[i]) + textOfFindings(files[i]) +
                      textOfDifferences(files[i], files[(i + 2) % files.size()]));
    }
    return all;
}

} // namespace

int main()
{
    const auto files = manyFiles();
    std::vector<std::vector<std::string>> found(threadCount);
    std::vector<std::thread> threads;
    for (std::vector<std::string>& own : found) {
        threads.emplace_back([&files, &own] { own = outputs(files); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    const auto alone = outputs(files);
    for (const std::vector<std::string>& own : found) {
        if (files.empty() || own != alone) {
            std::cerr << "wrong result\n";
            return 1;
        }
    }
    return 0;
}
