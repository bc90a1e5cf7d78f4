#pragma once

#include "mxonline/MxonlineApi.h"

#include <mxmodule/c/bytes.h>
#include <mxmodule/c/error.h>
#include <mxstation/c/plan.h>

#ifdef __cplusplus
extern "C" {
#endif

/// The coupler of a station, simulated: it answers Modbus requests in a thread of its own. It
/// begins with the defaults of the modules, inputs and outputs of zero. The caller frees it. Every
/// function may be called by any thread, except for `mxonline_simulator_stop` and
/// `mxonline_simulator_free`, which one thread calls alone.
typedef struct mxonline_simulator mxonline_simulator;

/// Listens at `listen`, "tcp:HOST[:PORT]" or "rtu:DEVICE[,BAUD[,PARITY[,STOPBITS]]]", and begins to
/// serve; the port may be 0, then the system chooses one. `strict`: registers between the
/// parameters of two modules do not exist, otherwise they are 0.
///
/// Fails if the plan has errors or no `modbus:` map, if parameters have no Modbus form, or if it
/// cannot listen.
MXONLINE_API mxonline_simulator* mxonline_simulator_start(const mxstation_plan* plan,
                                                          const char* listen, int strict,
                                                          mxmodule_error** error);

/// Closes all connections and ends the thread. Afterwards what it has can still be read.
MXONLINE_API void mxonline_simulator_stop(mxonline_simulator* simulator);

/// Stops `simulator` and frees it.
MXONLINE_API void mxonline_simulator_free(mxonline_simulator* simulator);

/// Returns where clients find it, with the port that the system chose: "tcp:127.0.0.1:40123".
MXONLINE_API mxmodule_bytes* mxonline_simulator_address(const mxonline_simulator* simulator,
                                                        mxmodule_error** error);

/// Returns a note if other computers reach a simulator that listens at `listen` as JSON, schema
/// "mxmodule.findings" version 1.
MXONLINE_API mxmodule_bytes* mxonline_listening_notes(const char* listen, mxmodule_error** error);

/// Returns the value of the channel called `channel`: "1", "-5"; of more than 64 bits its bytes as
/// hexadecimal digits, "0a 00".
MXONLINE_API mxmodule_bytes* mxonline_simulator_value(const mxonline_simulator* simulator,
                                                      const char* channel, mxmodule_error** error);

/// Sets the input called `channel` to `value`, both as in `mxonline_output_value`. Returns 0 after
/// a failure, otherwise 1.
MXONLINE_API int mxonline_simulator_set_input(mxonline_simulator* simulator, const char* channel,
                                              const char* value, mxmodule_error** error);

/// The same for an output.
MXONLINE_API int mxonline_simulator_set_output(mxonline_simulator* simulator, const char* channel,
                                               const char* value, mxmodule_error** error);

/// Returns what clients did until now as JSON, schema "mxonline.simulator-counts" version 1.
MXONLINE_API mxmodule_bytes* mxonline_simulator_counts(const mxonline_simulator* simulator,
                                                       mxmodule_error** error);

#ifdef __cplusplus
}
#endif
