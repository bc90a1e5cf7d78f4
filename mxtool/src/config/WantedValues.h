#pragma once

#include "config/AcceptedValue.h"
#include "config/ValuesFile.h"

namespace mxtool {

/// What a call asks for, of files and of its own words. Later values go before earlier ones.
class WantedValues
{
public:
    /// `device` outlives the object; `module` is its file, for diagnostics.
    WantedValues(const DeviceReport& describedDevice, std::string moduleFile);

    /// Adds what `file` asks for. Throws a `Failure` when it was made for another module type.
    void add(Values values, const std::string& file);

    /// Adds what the words "NAME=VALUE" of each --set ask for. Throws a `Failure` naming the words.
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
