#include "session/OpenedStation.h"

#include "session/PlainFile.h"

#include <mxmodule/ReplaceFile.h>
#include <text/Sha256.h>

#include <filesystem>
#include <utility>

namespace workbench {

OpenedStation::OpenedStation(const std::string& file)
    : filePath(file), target(mxmodule::followLinks(file))
{}

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
    auto text = textOfPlainFile(target, filePath);
    if (!text) {
        return {};
    }
    FileContent content{std::move(*text), {}};
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
    mxmodule::replaceFile(target, text);
    return text::sha256(text);
}

} // namespace workbench
