#pragma once

#include "coupler/ModuleRegisters.h"

#include <mxonline/CouplerDifference.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace mxonline {

/// A parameter of a row: its module by index, and its place among the module's parameters.
struct ParameterPlace
{
    std::size_t module = 0;
    std::size_t place = 0;
};

/// Whole parameters that one request writes.
struct ParameterWrite
{
    std::uint16_t address = 0;
    std::vector<std::uint16_t> values; ///< In the order of the coupler.
    std::vector<ParameterPlace> parameters;
    std::string subject; ///< For messages.
};

/// Returns the fewest requests of at most `most` registers that write `parameters`, ordered by
/// address, whole and nothing else.
std::vector<ParameterWrite> writesFor(const std::vector<ModuleRegisters>& modules,
                                      const std::vector<ParameterPlace>& parameters,
                                      std::uint16_t most);

/// Returns the requests after which a coupler that differs by `difference` has the parameters of
/// `modules`: of those that differ, or of all, if parameters that were written without a commit
/// cannot be read.
std::vector<ParameterWrite> writesToReach(const std::vector<ModuleRegisters>& modules,
                                          const CouplerDifference& difference);

} // namespace mxonline
