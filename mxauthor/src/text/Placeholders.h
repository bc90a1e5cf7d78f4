#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace mxauthor {

/// The number of the repetition within a text of the text form: <n>, <n-1>, <n+1>, <2*n>, <2*n+1>.

/// Returns whether `text` holds something that is, or was meant to be, such a placeholder.
bool hasPlaceholder(const std::string& text);

/// Returns the first one that is wrong; nothing when all are right.
[[nodiscard]] std::optional<std::string> wrongPlaceholder(const std::string& text);

/// Returns `text`, none of whose placeholders is wrong, with the numbers of repetition `n` in their
/// place.
std::string withNumbers(const std::string& text, std::uint32_t n);

} // namespace mxauthor
