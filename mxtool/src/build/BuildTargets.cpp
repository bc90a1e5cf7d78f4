#include "build/BuildTargets.h"

#include "Diagnostic.h"

#include <filesystem>
#include <set>

namespace mxtool {

namespace {

[[noreturn]] void failUsage(const std::string& place, const std::string& text,
                            const std::string& hint)
{
    throw Failure(Origin::Request, place, text, hint);
}

std::string fileOf(const std::string& text, const std::string& directory)
{
    if (text == "-") {
        failUsage(directory, "Standard input has no name for a file in this directory",
                  "name the output file");
    }
    return std::filesystem::path(text).stem().string() + ".bin";
}

std::vector<std::string> filesIn(const std::string& directory,
                                 const std::vector<std::string>& texts)
{
    std::vector<std::string> files;
    std::set<std::string> names;
    for (const std::string& text : texts) {
        const std::string name = fileOf(text, directory);
        if (!names.insert(name).second) {
            failUsage(text, "A second text for " + name, "build them one by one");
        }
        files.push_back((std::filesystem::path(directory) / name).string());
    }
    return files;
}

} // namespace

bool namesDirectory(const std::string& output)
{
    std::error_code ignored;
    return std::filesystem::is_directory(output, ignored) ||
           (!output.empty() && output.back() == '/');
}

std::vector<std::string> buildTargets(const std::vector<std::string>& files,
                                      const std::string& output)
{
    if (namesDirectory(output)) {
        return filesIn(output, files);
    }
    if (files.size() > 1) {
        failUsage(output, "More than one text, and the output is not a directory",
                  "name a directory, with / at its end when there is none yet");
    }
    return {output};
}

} // namespace mxtool
