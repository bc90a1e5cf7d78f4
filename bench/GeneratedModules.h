#pragma once

#include <devices/database/DeviceDatabase.h>

#include <filesystem>
#include <string>
#include <vector>

namespace bench {

/// Copies of the examples with identifiers of their own, as files and translated.
class GeneratedModules
{
public:
    /// Writes `count` files of `modules` modules into `directory`, so that the others replace one
    /// from another file; 0: each file is a module of its own.
    GeneratedModules(const std::filesystem::path& directory, std::size_t count,
                     std::size_t modules = 0);

    struct Module
    {
        devices::database::DeviceProperties record;
        devices::database::ModuleContent content;
    };

    /// Translates every file.
    std::vector<Module> translate() const;

    const std::vector<std::string>& files() const { return paths; }

private:
    std::vector<std::string> paths;
};

} // namespace bench
