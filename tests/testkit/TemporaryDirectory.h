#pragma once

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <stdlib.h>

namespace testkit {

/// A new directory that is removed with everything in it.
class TemporaryDirectory
{
public:
    TemporaryDirectory()
    {
        std::string name = (std::filesystem::temp_directory_path() / "parser-mx-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("cannot make a temporary directory: " + name);
        }
        directory = name;
    }
    ~TemporaryDirectory()
    {
        std::error_code ignored;
        std::filesystem::remove_all(directory, ignored);
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    /// Its path, without a trailing "/".
    std::string path() const { return directory.string(); }

    std::string path(const std::string& name) const { return (directory / name).string(); }

    /// Writes `content` to the file `name` and returns its path.
    std::string write(const std::string& name, const std::vector<char>& content) const
    {
        std::ofstream file(directory / name, std::ios::binary);
        file.write(content.data(), static_cast<std::streamsize>(content.size()));
        file.close();
        if (!file) {
            throw std::runtime_error("cannot write " + path(name));
        }
        return path(name);
    }

private:
    std::filesystem::path directory;
};

} // namespace testkit
