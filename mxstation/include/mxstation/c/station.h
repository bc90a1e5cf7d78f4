#pragma once

#include "mxstation/MxstationApi.h"

#include <mxmodule/c/bytes.h>
#include <mxmodule/c/error.h>

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/// Modules in a row, as a station file describes them. The caller frees it. It never changes.
typedef struct mxstation_station mxstation_station;

/// Returns the station of the station file at `path`, with the mx files that it names; paths in it
/// count from its directory. What is wrong with it is no error, see `mxstation_findings`; an error
/// is a file that cannot be read or is of another kind.
///
/// `catalogue_url` is the catalogue of modules named by identifier: "sqlite:PATH", or
/// "postgresql:CONNECTION"; a null pointer: the value of the environment variable
/// DEVICE_DATABASE_URL, else "sqlite:devices.sqlite". It is opened at the first such module.
MXSTATION_API mxstation_station* mxstation_load(const char* path, const char* catalogue_url,
                                                mxmodule_error** error);

/// The same for the `size` bytes at `source`, the content of a file called `name`. For a name in
/// angle brackets, such as "<standard input>", paths count from the current directory.
MXSTATION_API mxstation_station* mxstation_from_text(const void* source, size_t size,
                                                     const char* name, const char* catalogue_url,
                                                     mxmodule_error** error);

/// Frees `station`.
MXSTATION_API void mxstation_free(mxstation_station* station);

/// Returns the name that the station states.
MXSTATION_API mxmodule_bytes* mxstation_name(const mxstation_station* station,
                                             mxmodule_error** error);

/// Returns its text.
MXSTATION_API mxmodule_bytes* mxstation_source(const mxstation_station* station,
                                               mxmodule_error** error);

/// Returns what is wrong with its text, all of it, as JSON, schema "mxmodule.findings" version 1.
/// With an error among them the station is incomplete, and its plan has no addresses.
MXSTATION_API mxmodule_bytes* mxstation_findings(const mxstation_station* station,
                                                 mxmodule_error** error);

/// Returns its text, in which every module and reserved place states the addresses that it has in
/// the plan of the station: later changes of the row move none. Every other byte is kept. Fails if
/// the plan has errors.
MXSTATION_API mxmodule_bytes* mxstation_pinned(const mxstation_station* station,
                                               mxmodule_error** error);

#ifdef __cplusplus
}
#endif
