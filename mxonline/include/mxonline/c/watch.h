#pragma once

#include "mxonline/MxonlineApi.h"
#include "mxonline/c/coupler.h"

#include <mxmodule/c/bytes.h>
#include <mxmodule/c/error.h>

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/// Reads the values of channels from the process images of a coupler, again and again. The caller
/// frees it. It is used by the thread that uses the coupler.
typedef struct mxonline_watch mxonline_watch;

/// Watches the channels of `coupler` that the `count` texts at `names` select: an alias;
/// MODULE/CHANNEL, with name or position of the module; the name of a channel, if no other has it;
/// the name or position of a module for all of its channels. No names: all channels of the station.
/// Unknown and ambiguous names are an error, all of them. Sends nothing.
MXONLINE_API mxonline_watch* mxonline_watch_of(mxonline_coupler* coupler, const char* const* names,
                                               size_t count, mxmodule_error** error);

/// Frees `watch`, and closes its coupler if nothing else uses it.
MXONLINE_API void mxonline_watch_free(mxonline_watch* watch);

/// Returns the watched channels, in the order of the plan, as JSON, schema "mxonline.channels"
/// version 1.
MXONLINE_API mxmodule_bytes* mxonline_watch_channels(const mxonline_watch* watch,
                                                     mxmodule_error** error);

/// Reads the values; the first time and after a fault also the identity of the modules, if the
/// coupler has it. After a failure the next call tries again.
///
/// Returns them as JSON in one line, schema "mxtool.sample" version 1.
MXONLINE_API mxmodule_bytes* mxonline_watch_sample(mxonline_watch* watch, mxmodule_error** error);

#ifdef __cplusplus
}
#endif
