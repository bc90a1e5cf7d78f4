#include "FilePlace.h"

#include <mxmodule/ReplaceFile.h>

#include <filesystem>

namespace mxtool {

std::optional<FilePlace::Node> FilePlace::nodeOf(int failure, const struct stat& status)
{
    if (failure != 0) {
        return std::nullopt;
    }
    return Node{status.st_dev, status.st_ino};
}

FilePlace FilePlace::ofPath(const std::string& path)
{
    struct stat status = {};
    FilePlace place;
    place.file = nodeOf(stat(path.c_str(), &status), status);
    if (place.file && !S_ISREG(status.st_mode) && !S_ISBLK(status.st_mode)) {
        return {};
    }
    const std::filesystem::path target = mxmodule::followLinks(path);
    const std::filesystem::path parent = target.has_parent_path() ? target.parent_path() : ".";
    place.directory = nodeOf(stat(parent.c_str(), &status), status);
    place.name = target.filename().string();
    return place;
}

FilePlace FilePlace::ofDescriptor(int descriptor)
{
    struct stat status = {};
    FilePlace place;
    place.file = nodeOf(fstat(descriptor, &status), status);
    if (place.file && !S_ISREG(status.st_mode) && !S_ISBLK(status.st_mode)) {
        return {};
    }
    return place;
}

FilePlace FilePlace::ofName(const std::string& name)
{
    FilePlace place;
    place.name = name;
    return place;
}

bool FilePlace::isSameAs(const FilePlace& other) const
{
    const bool isSameFile = file && other.file && *file == *other.file;
    return isSameFile || (!name.empty() && name == other.name && directory == other.directory);
}

} // namespace mxtool
