#include "OutputFile.h"

#include "Diagnostic.h"
#include "FilePlace.h"
#include "FilesInUse.h"

#include <mxmodule/FileKind.h>
#include <mxmodule/HandWriting.h>

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

namespace mxtool {

namespace {

// Hints beyond the system's error text.
std::string hintForWrite(const std::string& place)
{
    std::error_code ignored;
    if (std::filesystem::is_directory(place, ignored)) {
        return "name a file in this directory";
    }
    const auto directory = std::filesystem::path(place).parent_path();
    return directory.empty() || std::filesystem::exists(directory, ignored)
               ? ""
               : "there is no directory " + directory.string() + ", create it first";
}

[[noreturn]] void failWrite(const std::string& place, int error)
{
    if (error == EPIPE) {
        throw ReaderLeft();
    }
    const std::string reason = error != 0 ? std::strerror(error) : "write failed";
    throw Failure(Origin::Output, place, "Cannot write: " + reason, hintForWrite(place));
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

// Devices and pipes cannot be replaced: they are written directly.
bool isReplaceable(const std::string& path)
{
    std::error_code ignored;
    const auto status = std::filesystem::status(path, ignored);
    return !std::filesystem::exists(status) || std::filesystem::is_regular_file(status);
}

// The new file gets the permissions of the file that it replaces.
void takePermissions(const std::filesystem::path& from, const std::filesystem::path& to)
{
    const auto status = std::filesystem::status(from);
    if (std::filesystem::exists(status)) {
        std::filesystem::permissions(to, status.permissions());
    }
}

// Takes over the permissions of `replaced`, if it exists, before the first byte is written.
void writeFile(const std::filesystem::path& path, const std::string& place,
               const std::string& content, const std::filesystem::path& replaced = {})
{
    errno = 0;
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    if (!file) {
        failWrite(place, errno);
    }
    takePermissions(replaced, path);
    writeStream(file, place, content);
}

// Its name does not depend on the length of the target's.
std::filesystem::path temporaryBeside(const std::filesystem::path& target)
{
    return target.parent_path() / ("mxtool.part-" + std::to_string(getpid()));
}

// Writes a temporary file in the same directory first.
void replaceFile(const std::filesystem::path& target, const std::string& place,
                 const std::string& content)
{
    const auto beside = temporaryBeside(target);
    try {
        writeFile(beside, place, content, target);
        std::filesystem::rename(beside, target);
    } catch (...) {
        std::error_code ignored;
        std::filesystem::remove(beside, ignored);
        throw;
    }
}

// A symbolic link is kept; its target is replaced.
void writeChecked(const std::string& path, const std::string& content)
{
    if (path == "-") {
        writeStream(std::cout, "<standard output>", content);
        return;
    }
    if (!isReplaceable(path)) {
        writeFile(path, path, content);
        return;
    }
    try {
        replaceFile(followLinks(path), path, content);
    } catch (const std::filesystem::filesystem_error& failure) {
        failWrite(path, failure.code().value());
    }
}

// Protects a user's work from being replaced by a file of another kind.
void requireSameKind(const std::string& path, mxmodule::FileKind kind)
{
    const mxmodule::FileKind present = mxmodule::kindOfFile(path);
    if (!mxmodule::costsWork(present) || present == kind || filesInUse().overwrites()) {
        return;
    }
    throw Failure(Origin::Request, path,
                  std::string("The file is ") + mxmodule::nameOf(present) +
                      ", the output would replace it by " + mxmodule::nameOf(kind),
                  "name another file, or add --overwrite to replace this one");
}

// Rewriting would lose the user's comments, `repeat` and `each`.
void requireNoLoss(const std::string& path, const std::string& content)
{
    const auto lost = filesInUse().overwrites()
                          ? std::nullopt
                          : mxmodule::writingLostBy(content, mxmodule::judgedContent(path));
    if (lost) {
        throw Failure(Origin::Request, path + ":" + std::to_string(lost->line),
                      "The file has " + lost->what + ", which the output would not keep",
                      "name another file, or add --overwrite to replace this one");
    }
}

} // namespace

void writeOutput(const std::string& path, const std::string& content)
{
    writeOutputs({{path, content}});
}

void writeOutputs(const std::vector<Output>& outputs)
{
    std::vector<std::string> paths;
    paths.reserve(outputs.size());
    for (const Output& output : outputs) {
        paths.push_back(output.path);
    }
    filesInUse().addOutputs(paths);
    for (const Output& output : outputs) {
        if (output.path != "-") {
            requireSameKind(output.path, mxmodule::kindOf(output.content));
            requireNoLoss(output.path, output.content);
        }
    }
    for (const Output& output : outputs) {
        writeChecked(output.path, output.content);
    }
}

void makeDirectory(const std::string& path)
{
    std::error_code error;
    std::filesystem::create_directories(path, error);
    if (error || !std::filesystem::is_directory(path, error)) {
        throw Failure(Origin::Output, path,
                      "Cannot make the directory: " +
                          (error ? error.message() : "there is a file of that name"));
    }
}

OutputFiles::OutputFiles(const std::vector<std::string>& paths, mxmodule::FileKind kind)
{
    filesInUse().addOutputs(paths);
    for (const std::string& path : paths) {
        requireSameKind(path, kind);
    }
}

void OutputFiles::requireWritable(const std::string& path) const
{
    if (path == "-") {
        return;
    }
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        failWrite(path, EISDIR);
    }
    if (isReplaceable(path)) {
        const auto beside = temporaryBeside(followLinks(path));
        writeFile(beside, path, "");
        std::filesystem::remove(beside, ignored);
    }
}

void OutputFiles::write(const std::string& path, const std::string& content)
{
    writeChecked(path, content);
}

} // namespace mxtool
