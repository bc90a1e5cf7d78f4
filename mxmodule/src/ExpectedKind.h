#pragma once

#include <string>

namespace mxmodule {

/// Throws a `Failure` when `content`, that of the file at `path`, is of a known kind that is not a
/// module. The message names the kind found and `expected`, the hint what takes it.
void requireModule(const std::string& path, const std::string& content,
                   const std::string& expected);

/// Throws a `Failure` when `source`, the text of the file at `path`, has no key of the text form.
/// Otherwise each of its lines would be reported as an error.
void requireKeyOfTextForm(const std::string& path, const std::string& source,
                          const std::string& expected);

} // namespace mxmodule
