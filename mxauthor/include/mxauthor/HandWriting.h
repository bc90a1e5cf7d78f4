#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace mxauthor {

/// A part of a YAML text that is lost when its content is read and written again.
struct HandWriting
{
    std::size_t line; ///< From 1.
    std::string text; ///< A comment from its "#" on, or the key "repeat" or "each".
};

/// Returns the comments of the YAML text `text` and its keys "repeat" and "each", in order. Quoted
/// texts and blocks (`|`, `>`) hold none. The text may have errors.
std::vector<HandWriting> handWritingIn(const std::string& text);

} // namespace mxauthor
