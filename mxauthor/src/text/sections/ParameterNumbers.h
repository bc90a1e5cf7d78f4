#pragma once

#include "text/BuildContext.h"

namespace mxauthor {

/// How people see the values of a parameter.
struct ParameterUnit
{
    mxformat::PhysicalScale scale; ///< As it is without a conversion.
    std::string unit;              ///< In UTF-8; empty: there are no physical values.
    bool isCertain = true;         ///< False: unknown because of an error already reported.
};

/// Returns the unit of a parameter: the one that its section states, else that of its conversion.
ParameterUnit unitOf(const Section& section, const BuiltParameter& parameter,
                     const BuildContext& context);

/// A value of a parameter as a text states it.
struct ParameterNumber
{
    mxformat::WholeNumber raw;
    bool isPhysical = false;
};

/// Reads a value that is not an option: a raw value, or a physical value with its unit, if there is
/// one. A physical value must be that of a raw value that fits into `field`, if it exists. Nothing
/// for another text, with an error if the unit is certain; the error also lists `options`.
[[nodiscard]] std::optional<ParameterNumber>
readParameterNumber(const YAML::Node& node, const ParameterUnit& unit,
                    const mxformat::BlockField& field, const std::vector<std::string>& options,
                    SourceErrors& errors);

} // namespace mxauthor
