#pragma once

// The C interface of libmxmodule: for C, and for every language that can call C.
//
// Objects are handles: a function that returns a pointer to one gives it to the caller, who frees
// it with the function of its type. No object points into another one: each may be freed, and used
// after the others are freed, in any order. To free a null pointer does nothing. No exception
// leaves a function; none has state of its own for the process.
//
// A function that can fail takes `error`, which may be null: it is set to a null pointer, or after
// a failure to an error, which the caller frees. A function without a result has changed nothing.
// Where memory runs out, JSON, also that of an error, may end the process by `std::terminate`:
// the JSON library allocates in destructors.
//
// Texts that are passed are UTF-8 and end with a NUL byte. Names of files are bytes, as the system
// takes them. Large results are JSON texts: docs/json-output.md describes each schema. A fact of
// the process such as the locale has no effect on any result.
//
// An object that never changes (modules, configurations, results) may be used by many threads at
// once. A catalogue is used by one thread at a time; after a fork, by the process that opened it
// alone.

#include "mxmodule/c/bytes.h"
#include "mxmodule/c/catalogue.h"
#include "mxmodule/c/check.h"
#include "mxmodule/c/columns.h"
#include "mxmodule/c/configuration.h"
#include "mxmodule/c/error.h"
#include "mxmodule/c/module.h"
