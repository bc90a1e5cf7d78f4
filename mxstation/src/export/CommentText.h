#pragma once

#include <initializer_list>
#include <string>

namespace mxstation {

/// Returns `bytes` as one line of UTF-8, control characters and direction marks made visible, in
/// which none of `pairs` occurs: a blank is between their two characters. So a name neither ends a
/// comment nor begins one in it.
std::string commentText(const std::string& bytes, std::initializer_list<const char*> pairs);

} // namespace mxstation
