#include "check/MxFilesOf.h"

#include "Diagnostic.h"
#include "InputFile.h"

#include <algorithm>
#include <filesystem>

namespace mxtool {

namespace {

namespace fs = std::filesystem;

} // namespace

std::vector<std::string> mxFilesOf(const std::string& path)
{
    std::error_code error;
    if (!fs::is_directory(path, error)) {
        return {path};
    }
    std::vector<std::string> files;
    for (fs::directory_iterator entry(path, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        if (isMxFileName(entry->path().filename().string())) {
            requireNoDevice(entry->path().string());
            files.push_back(entry->path().string());
        }
    }
    if (error) {
        throw Failure(ExitCode::Input, path, "Cannot read the directory: " + error.message());
    }
    if (files.empty()) {
        throw Failure(ExitCode::Input, path, "The directory holds no file MX*.bin",
                      "name a file of another name itself");
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace mxtool
