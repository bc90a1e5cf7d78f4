#include "OutputFile.h"

#include "Diagnostic.h"
#include "FilesInUse.h"

#include <mxmodule/FileKind.h>
#include <mxmodule/HandWriting.h>
#include <mxmodule/ReplaceFile.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

namespace mxtool {

namespace {

[[noreturn]] void failWrite(const std::string& place, int error)
{
    if (error == EPIPE) {
        throw ReaderLeft();
    }
    throw mxmodule::cannotWrite(place, error);
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

void writeDirectly(const std::string& path, const std::string& content)
{
    errno = 0;
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    if (!file) {
        failWrite(path, errno);
    }
    writeStream(file, path, content);
}

void writeChecked(const std::string& path, const std::string& content)
{
    if (path == "-") {
        writeStream(std::cout, "<standard output>", content);
        return;
    }
    if (isReplaceable(path)) {
        mxmodule::replaceFile(path, content);
    } else {
        writeDirectly(path, content);
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
    std::error_code ignored;
    const bool isDirectory = std::filesystem::is_directory(path, ignored);
    if (path != "-" && (isDirectory || isReplaceable(path))) {
        mxmodule::requireReplaceable(path);
    }
}

void OutputFiles::write(const std::string& path, const std::string& content)
{
    writeChecked(path, content);
}

} // namespace mxtool
