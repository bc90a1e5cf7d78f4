#pragma once

#include "mxonline/MxonlineApi.h"

#include <mxmodule/c/bytes.h>
#include <mxmodule/c/error.h>
#include <mxstation/c/plan.h>

#ifdef __cplusplus
extern "C" {
#endif

/// The coupler of a station over Modbus. The caller frees it. It is used by one thread at a time.
typedef struct mxonline_coupler mxonline_coupler;

/// Returns the coupler of the station of `plan` at `target`: "tcp:HOST[:PORT]" or
/// "rtu:DEVICE[,BAUD[,PARITY[,STOPBITS]]]". Fails if the plan has errors or no `modbus:` map, or if
/// a parameter image has no Modbus form.
///
/// Sends nothing: it connects at the first operation, and again after a fault.
MXONLINE_API mxonline_coupler* mxonline_connect(const mxstation_plan* plan, const char* target,
                                                mxmodule_error** error);

/// Frees `coupler`, and closes it if no watch and no outputs use it.
MXONLINE_API void mxonline_coupler_free(mxonline_coupler* coupler);

/// Returns where it is, with everything stated: "tcp:127.0.0.1:502".
MXONLINE_API mxmodule_bytes* mxonline_coupler_target(const mxonline_coupler* coupler,
                                                     mxmodule_error** error);

/// Returns what went over the bus until now as JSON, schema "mxonline.traffic" version 1.
MXONLINE_API mxmodule_bytes* mxonline_coupler_traffic(const mxonline_coupler* coupler,
                                                      mxmodule_error** error);

/// Reads the parameters of all modules and returns the text of the station in which the modules
/// state them. Every other byte of the text is kept.
MXONLINE_API mxmodule_bytes* mxonline_read_station(mxonline_coupler* coupler,
                                                   mxmodule_error** error);

/// How the parameters on a coupler differ from those of a station. The caller frees it. It never
/// changes.
typedef struct mxonline_difference mxonline_difference;

/// What the text of a difference is for.
typedef enum mxonline_difference_use MXMODULE_ANY_INT
{
    MXONLINE_PLAN = 0,  ///< What `mxonline_apply` would do; nothing was written.
    MXONLINE_APPLY = 1, ///< What `mxonline_apply` does when a person agrees.
    MXONLINE_VERIFY = 2 ///< Only whether the coupler is as planned.
} mxonline_difference_use;

/// Reads the coupler and compares it with the plan. Writes nothing.
MXONLINE_API mxonline_difference* mxonline_difference_of(mxonline_coupler* coupler,
                                                         mxmodule_error** error);

/// Frees `difference`.
MXONLINE_API void mxonline_difference_free(mxonline_difference* difference);

/// Returns 1 if every register of a parameter was read and is as the station states, otherwise 0,
/// also for a null pointer.
MXONLINE_API int mxonline_difference_is_same(const mxonline_difference* difference);

/// Returns it as JSON, schema "mxtool.coupler-difference" version 1.
MXONLINE_API mxmodule_bytes* mxonline_difference_json(const mxonline_difference* difference,
                                                      mxmodule_error** error);

/// Returns it as tables for people.
MXONLINE_API mxmodule_bytes* mxonline_difference_text(const mxonline_difference* difference,
                                                      mxonline_difference_use use,
                                                      mxmodule_error** error);

/// Returns the question to a person whether `mxonline_apply` may write: "Write ...?"
MXONLINE_API mxmodule_bytes* mxonline_difference_question(const mxonline_difference* difference,
                                                          mxmodule_error** error);

/// Returns an error for each module that is not that of the station as JSON, schema
/// "mxmodule.findings" version 1.
MXONLINE_API mxmodule_bytes* mxonline_difference_findings(const mxonline_difference* difference,
                                                          mxmodule_error** error);

/// What was written to a coupler, and what is there now. The caller frees it. It never changes.
typedef struct mxonline_report mxonline_report;

/// Writes the parameters that differ, commits, reads everything back and compares.
///
/// `confirmed` is what a person agreed to: if the coupler no longer differs in the same way, or a
/// module is not that of the station, nothing is written, and that is an error. After that a fault
/// is in the report: see `mxonline_report_is_done`.
MXONLINE_API mxonline_report* mxonline_apply(mxonline_coupler* coupler,
                                             const mxonline_difference* confirmed,
                                             mxmodule_error** error);

/// Frees `report`.
MXONLINE_API void mxonline_report_free(mxonline_report* report);

/// Returns 1 if everything was read back and is as the station states, otherwise 0, also for a null
/// pointer.
MXONLINE_API int mxonline_report_is_done(const mxonline_report* report);

/// Returns it as JSON, schema "mxtool.apply-report" version 1.
MXONLINE_API mxmodule_bytes* mxonline_report_json(const mxonline_report* report,
                                                  mxmodule_error** error);

/// Returns it for people.
MXONLINE_API mxmodule_bytes* mxonline_report_text(const mxonline_report* report,
                                                  mxmodule_error** error);

/// Returns it as a page (HTML) that contains all that it shows.
MXONLINE_API mxmodule_bytes* mxonline_report_html(const mxonline_report* report,
                                                  mxmodule_error** error);

/// Returns faults, and parameters that are not as planned, as JSON, schema "mxmodule.findings"
/// version 1.
MXONLINE_API mxmodule_bytes* mxonline_report_findings(const mxonline_report* report,
                                                      mxmodule_error** error);

#ifdef __cplusplus
}
#endif
