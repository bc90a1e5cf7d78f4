#pragma once

#include <mxmodule/Module.h>

#include <cstddef>
#include <string>
#include <vector>

namespace bench {

/// Returns the first `count` parameters of `module`, each set to its present value in another form,
/// so that none is taken as unchanged.
inline std::vector<mxmodule::Assignment> assignments(const mxmodule::Module& module,
                                                     std::size_t count)
{
    std::vector<mxmodule::Assignment> all;
    for (const mxmodule::Parameter& parameter : module.parameters()) {
        if (all.size() < count) {
            const std::string sign = parameter.digits.front() == '-' ? "" : "+";
            all.push_back({"#" + parameter.id,
                           parameter.hasOptions ? "#" + parameter.value : sign + parameter.digits});
        }
    }
    return all;
}

} // namespace bench
