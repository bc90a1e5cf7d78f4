#pragma once

// The C interface of libmxonline: for C, and for every language that can call C. What
// <mxmodule/mxmodule.h> says of objects, errors, texts and ownership holds here too; errors and
// bytes are those of libmxmodule, plans those of libmxstation.
//
// A coupler is used by one thread at a time, together with its watches and outputs. They share it:
// each may be freed in any order. A difference and a report never change, and may be used by many
// threads at once, as a simulator may. After a fork, the child neither uses nor frees the couplers,
// watches, outputs and simulators of its parent.

#include "mxonline/c/coupler.h"
#include "mxonline/c/outputs.h"
#include "mxonline/c/simulator.h"
#include "mxonline/c/watch.h"

#include <mxstation/mxstation.h>
