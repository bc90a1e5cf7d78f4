#pragma once

#include "mxonline/MxonlineApi.h"
#include "mxonline/c/coupler.h"

#include <mxmodule/c/bytes.h>
#include <mxmodule/c/error.h>

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/// A value for an output channel.
typedef struct mxonline_output_value
{
    const char* channel; ///< Alias, MODULE/CHANNEL, or its name if no other channel has it.
    /// Of one bit 0 or 1, also false or true, off or on; otherwise a decimal number, or the bits in
    /// hexadecimal after "0x"; of more than 64 bits its bytes as hexadecimal digits, "0a 00".
    const char* value;
} mxonline_output_value;

/// Sets output channels on a coupler and changes no other bit. The caller frees it. It is used by
/// the thread that uses the coupler.
typedef struct mxonline_outputs mxonline_outputs;

/// Returns the outputs of `coupler` that the `count` values at `values` are for. Unknown names,
/// inputs, values out of range, and channels that are set twice are an error, all of them. Sends
/// nothing.
MXONLINE_API mxonline_outputs* mxonline_outputs_of(mxonline_coupler* coupler,
                                                   const mxonline_output_value* values,
                                                   size_t count, mxmodule_error** error);

/// Frees `outputs`, and closes the coupler if nothing else uses it. Outputs that were written stay
/// as they are.
MXONLINE_API void mxonline_outputs_free(mxonline_outputs* outputs);

// The results are JSON, schema "mxonline.outputs" version 1.

/// Reads the identity of the modules, if the coupler has it, and the outputs. Writes nothing.
MXONLINE_API mxmodule_bytes* mxonline_outputs_read(mxonline_outputs* outputs,
                                                   mxmodule_error** error);

/// Reads as `mxonline_outputs_read` does, sets the channels, and reads them back. From the first
/// write on a fault is in the result: see its member "done".
MXONLINE_API mxmodule_bytes* mxonline_outputs_write(mxonline_outputs* outputs,
                                                    mxmodule_error** error);

/// Gives the channels the values that they had before the first write, in the same way; tries three
/// times. A fault is in the result, which has no outputs if nothing was written.
MXONLINE_API mxmodule_bytes* mxonline_outputs_restore(mxonline_outputs* outputs,
                                                      mxmodule_error** error);

#ifdef __cplusplus
}
#endif
