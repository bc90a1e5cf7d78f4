#pragma once

#include <cstddef>
#include <string>

namespace mxonline {

/// A channel of a station and what it is called.
struct NamedChannel
{
    /// Its alias, "MODULE/CHANNEL" or `MODULE/#ID`: finds this channel alone, and no other has it.
    std::string name;
    std::size_t index = 0;  ///< In `mxstation::Plan::channels`.
    std::size_t module = 0; ///< Position of its module, from 1.
    std::string moduleName; ///< Name of its module.
    std::string channel;    ///< Its name in the module; may be empty.
    std::string alias;      ///< May be empty.
    std::string symbol;     ///< IEC address such as "IW4".
};

} // namespace mxonline
