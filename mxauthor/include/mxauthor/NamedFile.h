#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace mxauthor {

/// A file that a text form names.
struct [[nodiscard]] NamedFile
{
    std::string content;
    std::optional<std::string> problem; ///< Why it has no content: the whole message.
};

/// Reads the file at a path: what the text states, appended to the directory of the text.
using FileReader = std::function<NamedFile(const std::filesystem::path&)>;

/// Reads the regular file at `path`, of at most 16 MiB.
NamedFile readNamedFile(const std::filesystem::path& path);

} // namespace mxauthor
