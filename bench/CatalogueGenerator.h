#pragma once

#include "GeneratedModules.h"

#include <cstddef>

namespace bench {

/// A catalogue of many modules as vendors describe them: labels in English and German, an order
/// code of each module's own, 2 to 64 channels, 4 to 60 parameters. The identifiers of one kind
/// follow each other, as in the lists of vendors. The same on every call and machine.
class CatalogueGenerator
{
public:
    /// A catalogue of `moduleCount` modules, at most 12 millions: so many order codes there are.
    explicit CatalogueGenerator(std::size_t moduleCount) : count(moduleCount) {}

    /// Returns module `number`, below the count.
    GeneratedModules::Module module(std::size_t number) const;

    std::size_t size() const { return count; }

private:
    std::size_t count;
};

} // namespace bench
