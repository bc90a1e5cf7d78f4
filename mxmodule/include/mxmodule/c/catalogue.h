#pragma once

#include "mxmodule/MxmoduleApi.h"
#include "mxmodule/c/bytes.h"
#include "mxmodule/c/error.h"
#include "mxmodule/c/module.h"

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/// An open catalogue of modules. The caller frees it. It is used by one thread at a time, and by no
/// other process: after a fork, the child neither uses nor frees those of its parent.
typedef struct mxmodule_catalogue mxmodule_catalogue;

/// Opens the catalogue at `url`: "sqlite:PATH", or "postgresql:CONNECTION"; a null pointer: at the
/// value of the environment variable DEVICE_DATABASE_URL, else "sqlite:devices.sqlite". `create`:
/// creates what is missing.
MXMODULE_API mxmodule_catalogue* mxmodule_catalogue_open(const char* url, int create,
                                                         mxmodule_error** error);

/// Closes `catalogue` and frees it.
MXMODULE_API void mxmodule_catalogue_free(mxmodule_catalogue* catalogue);

/// Returns its name in messages: engine, host and database, never a password.
MXMODULE_API mxmodule_bytes* mxmodule_catalogue_name(const mxmodule_catalogue* catalogue,
                                                     mxmodule_error** error);

/// Returns the modules that match as JSON, schema "mxtool.devices" version 1, the best matches
/// first, then ordered by family and module identifier.
///
/// They have each of `words`, which are separated by blanks, in the label, the order code, the name
/// of a channel or parameter or the text of an option, and meet each of the `count` conditions,
/// such as "in_bytes>4". Null and 0: all modules.
MXMODULE_API mxmodule_bytes* mxmodule_catalogue_search(mxmodule_catalogue* catalogue,
                                                       const char* words,
                                                       const char* const* conditions, size_t count,
                                                       mxmodule_error** error);

/// A search, and which part of the modules that match is wanted. Zeros: all modules.
typedef struct mxmodule_search
{
    const char* words;             ///< As for `mxmodule_catalogue_search`; may be null.
    const char* const* conditions; ///< The same.
    size_t count;                  ///< Of `conditions`.
    size_t limit;                  ///< At most so many modules; 0: all.
    const char* after;  ///< Only modules after that with this identifier; null: from the first on.
    const char* family; ///< Of that module; null: "kv38", or the first family that has it.
} mxmodule_search;

/// Returns the part of the modules that `search` asks for, as JSON as above. `has_more`, which may
/// be null, becomes 1 if modules that match come after the part, otherwise 0. It is an error if the
/// module after which the part begins does not match.
MXMODULE_API mxmodule_bytes* mxmodule_catalogue_search_page(mxmodule_catalogue* catalogue,
                                                            const mxmodule_search* search,
                                                            int* has_more, mxmodule_error** error);

/// Returns how `search` is carried out as JSON, schema "mxtool.search-explanation" version 1.
MXMODULE_API mxmodule_bytes* mxmodule_catalogue_explain_json(mxmodule_catalogue* catalogue,
                                                             const mxmodule_search* search,
                                                             mxmodule_error** error);

/// Returns the same as sentences for people.
MXMODULE_API mxmodule_bytes* mxmodule_catalogue_explain_text(mxmodule_catalogue* catalogue,
                                                             const mxmodule_search* search,
                                                             mxmodule_error** error);

/// Returns a warning if such a search may miss modules, as JSON, schema "mxmodule.findings"
/// version 1.
MXMODULE_API mxmodule_bytes* mxmodule_catalogue_search_findings(mxmodule_catalogue* catalogue,
                                                                const char* words,
                                                                const char* const* conditions,
                                                                size_t count,
                                                                mxmodule_error** error);

/// Returns the record of the module with the identifier `module_id`, eight hexadecimal digits, as
/// JSON, schema "mxtool.device-record" version 1. The error of an unknown one names those that
/// there are.
MXMODULE_API mxmodule_bytes* mxmodule_catalogue_find(mxmodule_catalogue* catalogue,
                                                     const char* module_id, mxmodule_error** error);

/// Returns the mx file of a module, byte for byte; of no bytes if it is stored without it.
MXMODULE_API mxmodule_bytes* mxmodule_catalogue_file(mxmodule_catalogue* catalogue,
                                                     const char* module_id, mxmodule_error** error);

/// Returns the module made of its stored mx file.
MXMODULE_API mxmodule_module*
mxmodule_catalogue_module(mxmodule_catalogue* catalogue, const char* module_id,
                          uint32_t input_offset, uint32_t output_offset, mxmodule_error** error);

/// Removes a module. Returns 0 after a failure, otherwise 1; an unknown one is a failure.
MXMODULE_API int mxmodule_catalogue_remove(mxmodule_catalogue* catalogue, const char* module_id,
                                           mxmodule_error** error);

/// What an operation tells its caller while it runs, on the thread of the call. Each function may
/// be null; one that returns a number other than 0 ends the operation, which then fails.
typedef struct mxmodule_observer
{
    void* context; ///< Passed to the functions.
    /// A warning or an error in work that continues, as JSON, schema "mxmodule.findings" version 1;
    /// as long as the call.
    int (*notice)(void* context, const char* findings);
    /// `done` of `total` files are done.
    int (*progress)(void* context, size_t done, size_t total);
} mxmodule_observer;

/// Stores the modules of the files MX*.bin in `directory`, in one transaction; a file that cannot
/// be translated is a finding. `replace`: removes the modules of which there is no file. `observer`
/// may be null.
///
/// Returns what has changed as JSON, schema "mxmodule.population" version 1.
MXMODULE_API mxmodule_bytes* mxmodule_catalogue_populate(mxmodule_catalogue* catalogue,
                                                         const char* directory, int replace,
                                                         const mxmodule_observer* observer,
                                                         mxmodule_error** error);

#ifdef __cplusplus
}
#endif
