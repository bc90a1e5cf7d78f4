#pragma once

#include <mxstation/Plan.h>

#include <cstdint>

namespace mxstation {

/// Sums over the modules of a plan.
struct PlanTotals
{
    explicit PlanTotals(const Plan& plan)
    {
        for (const PlannedModule& module : plan.modules) {
            input += module.input.size;
            output += module.output.size;
            parameters += module.image.size();
            registers += module.registers.size();
        }
    }

    std::uint64_t input = 0;      ///< Bytes of data in the input image.
    std::uint64_t output = 0;     ///< Bytes of data in the output image.
    std::uint64_t parameters = 0; ///< Bytes of the parameter images.
    std::uint64_t registers = 0;  ///< Modbus registers of the parameter images that have them.
};

} // namespace mxstation
