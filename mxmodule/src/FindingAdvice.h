#pragma once

#include <mxmodule/Finding.h>

namespace mxmodule {

/// Sets `advice` of `finding`, and `hint` to its words.
void giveAdvice(Finding& finding, Advice what);

} // namespace mxmodule
