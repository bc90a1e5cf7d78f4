#pragma once

#include "mxauthor/groups/Parameters.h"

#include <string>

namespace mxauthor {

/// The value of a parameter in the parameter block, and its bounds.
struct ParameterValue
{
    mxformat::BlockField field;
    bool present = false; ///< Whether the value lies within the block.
    mxformat::WholeNumber value{};
    mxformat::WholeNumber minimum{}; ///< The limit of the datatype if none is stated.
    mxformat::WholeNumber maximum{};
};

/// Decodes the value of `record` from the parameter block `block`.
ParameterValue parameterValue(const ParameterRecord& record, const Bytes& block);

/// Whether the number in the 8-byte slot `slot` can be a value of `field`. A signed value may be
/// sign-extended, or zero-extended from its own size.
bool holdsSlot(const mxformat::BlockField& field, std::uint64_t slot);

/// Returns the number that readers read from `slot`: its last bytes, as many as the value has; all
/// of them for an unknown datatype.
mxformat::WholeNumber numberOfSlot(const mxformat::BlockField& field, std::uint64_t slot);

/// Returns the numbers that datatypes have, as texts state them: "1 to 9".
std::string datatypeNumbers();

} // namespace mxauthor
