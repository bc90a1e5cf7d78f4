#include "OutputFile.h"

#include "Diagnostic.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>

namespace mxtool {

namespace {

[[noreturn]] void failWrite(const std::string& place, int error)
{
    const std::string reason = error != 0 ? std::strerror(error) : "write failed";
    throw Failure(ExitCode::Output, {"error", place, "Cannot write: " + reason, ""});
}

void writeStream(std::ostream& stream, const std::string& place, const std::string& content)
{
    errno = 0;
    stream.write(content.data(), static_cast<std::streamsize>(content.size()));
    stream.flush();
    if (!stream) {
        failWrite(place, errno);
    }
}

// Devices and pipes cannot be replaced: they are written as they are.
bool isReplaceable(const std::string& path)
{
    std::error_code ignored;
    const auto status = std::filesystem::status(path, ignored);
    return !std::filesystem::exists(status) || std::filesystem::is_regular_file(status);
}

void writeFile(const std::string& path, const std::string& place, const std::string& content)
{
    errno = 0;
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    if (!file) {
        failWrite(place, errno);
    }
    writeStream(file, place, content);
}

} // namespace

void writeOutput(const std::string& path, const std::string& content)
{
    if (path == "-") {
        writeStream(std::cout, "<standard output>", content);
        return;
    }
    if (!isReplaceable(path)) {
        writeFile(path, path, content);
        return;
    }
    const std::string beside = path + ".part-" + std::to_string(getpid());
    try {
        writeFile(beside, path, content);
        std::filesystem::rename(beside, path);
    } catch (const std::filesystem::filesystem_error& failure) {
        std::filesystem::remove(beside);
        failWrite(path, failure.code().value());
    } catch (...) {
        std::error_code ignored;
        std::filesystem::remove(beside, ignored);
        throw;
    }
}

} // namespace mxtool
