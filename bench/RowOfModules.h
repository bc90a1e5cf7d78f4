#pragma once

#include <mxstation/Station.h>

#include <cstddef>
#include <vector>

namespace bench {

/// Returns a station of `count` small modules, each of an mx file of its own.
mxstation::Station rowOfModules(std::size_t count);

/// Gives each module of `station` a value for its first four parameters, each the present one in
/// another form.
void giveValues(mxstation::Station& station);

} // namespace bench
