#pragma once

#include "config/AcceptedValue.h"
#include "config/ValuesFile.h"

namespace mxtool {

/// The values that the user sets, by files and by options. Later values replace earlier ones.
class WantedValues
{
public:
    /// `describedDevice` must outlive the object; `moduleFile` is its file, for diagnostics.
    WantedValues(const DeviceReport& describedDevice, std::string moduleFile);

    /// Adds the values of `file`. Throws a `Failure` when they are for another module type.
    void add(Values values, const std::string& file);

    /// Adds the value "NAME=VALUE" of each --set. Throws a `Failure` naming the argument.
    void add(const std::vector<std::string>& words, ValueCheck check);

    /// In the order in which they are written.
    const std::vector<Assignment>& assignments() const { return all; }

    /// The image to write into, of the last file that has one.
    const std::optional<std::vector<char>>& image() const { return base; }
    const std::string& imageFile() const { return baseFile; }

private:
    void addOver(std::vector<Assignment> later);

    const DeviceReport& device;
    std::string module;
    std::optional<std::vector<char>> base;
    std::string baseFile;
    std::vector<Assignment> all;
};

} // namespace mxtool
