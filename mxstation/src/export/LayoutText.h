#pragma once

#include <mxstation/Layout.h>

#include <string>

namespace mxstation {

/// Returns `layout` with its limits in a line: "plain: as in the row, at most 64 modules, ...".
std::string layoutText(const Layout& layout);

} // namespace mxstation
