#pragma once

#include "mxmodule/Module.h"

namespace mxmodule {

/// The values that a person sets, by files and by words. Later values replace earlier ones.
class MXMODULE_API WantedValues
{
public:
    /// Without a value yet. Keeps a copy of `module`.
    explicit WantedValues(const Module& module);

    /// Adds the values of `file`. Throws a `Failure` when they are for another module type.
    void add(Values values, const std::string& file);

    /// Adds the value "NAME=VALUE" of each of `words`. A finding names `option` and the word.
    /// Throws a `Failure`.
    void add(const std::vector<std::string>& words, const std::string& option, ValueCheck check);

    /// In the order in which they are written.
    const std::vector<Assignment>& assignments() const { return all; }

    /// The image to write into, of the last file that has one.
    const std::optional<std::vector<char>>& image() const { return base; }
    /// The name of that file; empty: none.
    const std::string& imageFile() const { return baseFile; }

private:
    void addOver(std::vector<Assignment> later);

    Module module;
    std::optional<std::vector<char>> base;
    std::string baseFile;
    std::vector<Assignment> all;
};

} // namespace mxmodule
