#include "session/OpenedStation.h"

#include <mxmodule/ReadFile.h>
#include <mxmodule/ReplaceFile.h>
#include <text/Sha256.h>

#include <filesystem>
#include <utility>

namespace workbench {

FileChanged::FileChanged(FileContent found)
    : std::runtime_error("The file was changed by another program, and is not overwritten"),
      content(std::move(found))
{}

std::string OpenedStation::name() const
{
    return std::filesystem::path(filePath).filename().string();
}

FileContent OpenedStation::read() const
{
    std::error_code ignored;
    if (!std::filesystem::exists(filePath, ignored)) {
        return {};
    }
    const std::vector<char> bytes = mxmodule::readFile(filePath);
    FileContent content{{bytes.begin(), bytes.end()}, {}};
    content.version = text::sha256(content.text);
    return content;
}

std::string OpenedStation::save(const std::string& text, const std::string& from)
{
    const std::lock_guard<std::mutex> oneAfterTheOther(saving);
    FileContent present = read();
    if (present.version != from) {
        throw FileChanged(std::move(present));
    }
    mxmodule::replaceFile(filePath, text);
    return text::sha256(text);
}

} // namespace workbench
