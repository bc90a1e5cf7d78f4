#pragma once

#include "GeneratedModules.h"

#include <cstddef>
#include <filesystem>
#include <string>

namespace bench {

/// A temporary directory with generated modules and a database, removed by the destructor.
class TemporaryCatalogue
{
public:
    /// `moduleCount` files, each of a module of its own unless `distinctModules` is stated.
    explicit TemporaryCatalogue(std::size_t moduleCount, std::size_t distinctModules = 0);
    ~TemporaryCatalogue();
    TemporaryCatalogue(const TemporaryCatalogue&) = delete;
    TemporaryCatalogue& operator=(const TemporaryCatalogue&) = delete;

    /// Returns the directory of the mx files.
    std::string moduleDirectory() const { return (directory / "modules").string(); }

    const GeneratedModules& modules() const { return generated; }

    /// Creates a device database with empty tables and returns its path.
    std::string freshSqliteFile() const;

private:
    std::filesystem::path directory;
    GeneratedModules generated;
};

} // namespace bench
