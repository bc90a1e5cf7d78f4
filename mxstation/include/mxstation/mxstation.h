#pragma once

// The C interface of libmxstation: for C, and for every language that can call C. What
// <mxmodule/mxmodule.h> says of objects, errors, texts and ownership holds here too; errors and
// bytes are those of libmxmodule.
//
// No object ever changes: each may be used by many threads at once.

#include "mxstation/c/comparison.h"
#include "mxstation/c/export.h"
#include "mxstation/c/plan.h"
#include "mxstation/c/station.h"

#include <mxmodule/mxmodule.h>
