#pragma once

#include "mxauthor/Field.h"

#include <optional>
#include <string>

namespace mxauthor {

/// Returns `text` as a gzip file without a name and with the time 0: the same text always gives the
/// same bytes.
Bytes gzipped(const std::string& text);

/// Returns what the gzip file `bytes` holds; empty when it is none, or holds more than `limit`
/// bytes.
std::optional<std::string> gunzipped(const Bytes& bytes, std::size_t limit);

} // namespace mxauthor
