#pragma once

#include "ParameterNumbers.h"
#include "text/BuildContext.h"
#include "text/DumpContext.h"

namespace mxauthor {

/// The default of one parameter as it is written.
struct StatedDefault
{
    std::optional<std::string> text; ///< YAML; empty where the block has no place for it.
    bool overlaps = false;           ///< Shares bits with a parameter before it.
};

/// The block as it would be built from the defaults of the parameters alone, and these defaults.
struct DefaultsOfBlock
{
    Bytes block;
    std::vector<StatedDefault> stated; ///< By parameter.
};

/// Parameters within the block that share no bits with an earlier one have a default.
DefaultsOfBlock defaultsOf(const DumpContext& context);

/// Reads the default: a raw value, a physical one, or the text of an option. An error when the
/// datatype cannot hold it; nothing for a parameter without a place in the block.
void readDefault(BuiltParameter& parameter, const ParameterUnit& unit, const BuildContext& context);

/// Returns the size in bytes of the block that holds all these parameters.
template <typename Records, typename Get>
std::size_t blockSizeFor(const Records& records, Get recordOf)
{
    std::size_t size = 0;
    for (const auto& record : records) {
        const mxformat::BlockField field = blockFieldOf(recordOf(record));
        if (field.exists()) {
            size = std::max<std::size_t>(size, field.end());
        }
    }
    return size;
}

/// Returns the number in a slot or block field as people read it for the datatype.
std::string slotText(std::uint64_t bits, std::uint8_t datatype);

} // namespace mxauthor
