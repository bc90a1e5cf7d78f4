#pragma once

#include <string>

namespace workbench {

/// Returns whether the path is one of page and assets, which need no token.
inline bool isOpenPath(const std::string& path)
{
    return path == "/" || path == "/workbench.js" || path == "/workbench.css" ||
           path == "/icon.svg";
}

} // namespace workbench
