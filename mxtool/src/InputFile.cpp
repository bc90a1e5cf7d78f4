#include "InputFile.h"

#include "Diagnostic.h"
#include "FilesInUse.h"

#include <devices/parser/mx/LoadFile.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <iterator>

namespace mxtool {

namespace {

std::vector<char> loadStandardInput()
{
    std::vector<char> bytes{std::istreambuf_iterator<char>(std::cin), {}};
    bytes.push_back('\xFF');
    return bytes;
}

} // namespace

std::vector<char> loadInput(const std::string& path)
{
    filesInUse().addInput(path);
    if (path == "-") {
        return loadStandardInput();
    }
    std::vector<char> bytes;
    errno = 0;
    try {
        devices::parser::mx::loadFile(path, bytes);
    } catch (const std::runtime_error& failure) {
        const std::string reason = errno != 0 ? std::string(": ") + std::strerror(errno) : "";
        std::error_code ignored;
        throw Failure(ExitCode::Input, path, failure.what() + reason,
                      std::filesystem::is_directory(path, ignored) ? "name a file in this directory"
                                                                   : "");
    }
    return bytes;
}

std::vector<char> loadBytes(const std::string& path)
{
    std::vector<char> bytes = loadInput(path);
    bytes.pop_back();
    return bytes;
}

mxauthor::BuildResult buildInput(const std::string& source, const std::string& path)
{
    const std::filesystem::path directory =
        path == "-" ? std::filesystem::path() : std::filesystem::path(path).parent_path();
    mxauthor::BuildResult result = mxauthor::buildFromText(source, directory);
    for (const std::filesystem::path& file : result.filesRead) {
        filesInUse().addInput(file.string());
    }
    return result;
}

std::string inputName(const std::string& path)
{
    return path == "-" ? "<standard input>" : path;
}

} // namespace mxtool
