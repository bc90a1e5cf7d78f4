#pragma once

#include "MxBuffer.h"
#include "TemporaryDirectory.h"

#include <mxmodule/Population.h>

#include <devices/database/DeviceDatabase.h>

#include <cstdint>
#include <string>
#include <vector>

/// Returns an mx file with 7 bytes of input and 4 of output, labelled "Test module".
inline std::vector<char> mxFile(std::uint32_t moduleId)
{
    return testkit::minimalModule({"InData DWB", "OutData W W"}, moduleId).chars();
}

/// Returns the same file without its last four bytes.
inline std::vector<char> cutFile(std::uint32_t moduleId)
{
    std::vector<char> file = mxFile(moduleId);
    file.resize(file.size() - 4);
    return file;
}

/// A directory for mx files.
class ModuleDirectory
{
public:
    void add(const std::string& name, std::uint32_t moduleId) { add(name, mxFile(moduleId)); }
    void add(const std::string& name, const std::vector<char>& content)
    {
        directory.write(name, content);
    }

    std::string path() const { return directory.path(); }
    std::string path(const std::string& name) const { return directory.path(name); }

    mxmodule::Population populate(mxmodule::Catalogue& catalogue, bool replace = false,
                                  mxmodule::Observer* observer = nullptr) const
    {
        return mxmodule::populate(mxmodule::listMxDirectory(path(), observer), catalogue, {replace},
                                  observer);
    }

private:
    testkit::TemporaryDirectory directory;
};

/// Returns the module identifiers in `modules`.
inline std::vector<std::string> idsOf(const std::vector<mxmodule::CatalogueEntry>& modules)
{
    std::vector<std::string> ids;
    for (const mxmodule::CatalogueEntry& module : modules) {
        ids.push_back(module.moduleId);
    }
    return ids;
}

/// Stores a record of a host, without an mx file and without content.
inline void storeHostRecord(const std::string& url, const std::string& moduleId,
                            const std::string& family = "kv38")
{
    devices::database::DeviceProperties record;
    record.family = family;
    record.moduleIdText = moduleId;
    record.brandLabelName = "4 AI \xB1"
                            "10 V"; // Windows-1252
    devices::database::DeviceDatabase(url).insert(record);
}

/// Returns the finding of the `Failure` that `operation` throws.
template <class Operation>
mxmodule::Finding reasonOf(const Operation& operation)
{
    try {
        operation();
    } catch (const mxmodule::Failure& failure) {
        return failure.reason();
    }
    ADD_FAILURE() << "nothing was thrown";
    return {};
}
