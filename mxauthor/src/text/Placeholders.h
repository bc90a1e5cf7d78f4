#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace mxauthor {

/// The number of the repetition within a text of the text form: <n>, <n-1>, <n+1>, <2*n>, <2*n+1>.

/// Returns whether `text` holds something that is, or was meant to be, such a placeholder.
bool hasPlaceholder(const std::string& text);

/// Returns `text` with the numbers of repetition `n` in place of its placeholders. Empty when one
/// of them is wrong, which `wrong` then names.
std::optional<std::string> withNumbers(const std::string& text, std::uint32_t n,
                                       std::string* wrong);

} // namespace mxauthor
