#pragma once

#include "mxstation/MxstationApi.h"
#include "mxstation/c/station.h"

#include <mxmodule/c/bytes.h>
#include <mxmodule/c/error.h>
#include <mxmodule/c/module.h>

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/// A station with the places of its modules and channels. The caller frees it. It never changes.
///
/// A plan with errors is a plan without modules: every function but `mxstation_plan_ok`,
/// `mxstation_plan_findings`, `mxstation_check_json` and `mxstation_plan_free` fails with them.
typedef struct mxstation_plan mxstation_plan;

/// Returns the plan of `station`.
MXSTATION_API mxstation_plan* mxstation_plan_of(const mxstation_station* station,
                                                mxmodule_error** error);

/// Frees `plan`.
MXSTATION_API void mxstation_plan_free(mxstation_plan* plan);

/// Returns 1 if the plan has no error, otherwise 0, also for a null pointer.
MXSTATION_API int mxstation_plan_ok(const mxstation_plan* plan);

/// Returns what is wrong with the station and with the plan as JSON, schema "mxmodule.findings"
/// version 1.
MXSTATION_API mxmodule_bytes* mxstation_plan_findings(const mxstation_plan* plan,
                                                      mxmodule_error** error);

/// Returns the same as a check states it, in which warnings are errors, as JSON, schema
/// "mxtool.station-check" version 1.
MXSTATION_API mxmodule_bytes* mxstation_check_json(const mxstation_plan* plan,
                                                   mxmodule_error** error);

/// Returns the row as JSON, schema "mxtool.station" version 1: of each module name, identifier and
/// bytes in both process images, and the bits that belong to no channel.
MXSTATION_API mxmodule_bytes* mxstation_plan_json(const mxstation_plan* plan,
                                                  mxmodule_error** error);

/// Returns the same as tables for people.
MXSTATION_API mxmodule_bytes* mxstation_plan_text(const mxstation_plan* plan,
                                                  mxmodule_error** error);

/// Stores the number of modules in the row in `count`; reserved places are none. Returns 0 after a
/// failure, otherwise 1.
MXSTATION_API int mxstation_module_count(const mxstation_plan* plan, size_t* count,
                                         mxmodule_error** error);

/// Returns the module at `position`, from 1, with its data at the addresses that it has in the
/// station. The caller frees it.
MXSTATION_API mxmodule_module* mxstation_module_at(const mxstation_plan* plan, size_t position,
                                                   mxmodule_error** error);

/// Returns the raw parameter image of that module with the values of the station.
MXSTATION_API mxmodule_bytes* mxstation_module_image(const mxstation_plan* plan, size_t position,
                                                     mxmodule_error** error);

/// Returns the Modbus registers of that image, in the byte order of the computer, and stores their
/// number in `count`, which is 0 for a module without parameters. An image without a Modbus form is
/// an error that says why. As long as `plan`.
MXSTATION_API const uint16_t* mxstation_module_registers(const mxstation_plan* plan,
                                                         size_t position, size_t* count,
                                                         mxmodule_error** error);

#ifdef __cplusplus
}
#endif
