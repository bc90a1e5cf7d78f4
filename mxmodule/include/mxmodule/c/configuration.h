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

/// The form in which a master writes a configuration.
typedef enum mxmodule_fieldbus MXMODULE_ANY_INT
{
    MXMODULE_RAW = 0,   ///< The parameter image as the module holds it.
    MXMODULE_MODBUS = 1 ///< Whole 16-bit registers, of each the high byte first.
} mxmodule_fieldbus;

/// How strictly values are checked.
typedef enum mxmodule_value_check MXMODULE_ANY_INT
{
    MXMODULE_FULL = 0,       ///< They must be in the range or an option.
    MXMODULE_NUMBER_ONLY = 1 ///< Any number that fits into the parameter's bits.
} mxmodule_value_check;

/// Which parameters outputs list.
typedef enum mxmodule_listing MXMODULE_ANY_INT
{
    MXMODULE_ALL = 0,    ///< Every parameter.
    MXMODULE_CHANGED = 1 ///< Those that differ from the defaults.
} mxmodule_listing;

/// A value for a parameter.
typedef struct mxmodule_assignment
{
    /// "NAME", "CHANNEL/NAME" (the channel's name, its number, or both as in tables; "module" for
    /// the module itself) or "#ID".
    const char* name;
    /// The text of an option, its number, "#N" for option number N even if an option has the text
    /// N, or a number, in physical units where the parameter has some, with or without the unit.
    const char* value;
} mxmodule_assignment;

/// What becomes of values in a parameter image. The caller frees it. It never changes. Nothing is
/// in a null pointer.
typedef struct mxmodule_composition mxmodule_composition;

/// Writes the `count` values at `values` into the parameter image of `image_size` bytes at `image`;
/// a null pointer: into the default one. Checks all of them before it writes the first: a rejected
/// value, or one that another one overwrites, is an error, and there is no result.
MXMODULE_API mxmodule_composition* mxmodule_compose(const mxmodule_module* module,
                                                    const mxmodule_assignment* values, size_t count,
                                                    const void* image, size_t image_size,
                                                    mxmodule_value_check check,
                                                    mxmodule_error** error);

/// The same with the values of a file of the `size` bytes at `content`, called `file`: YAML, or by
/// its extension JSON or CSV, as a configuration gives them.
MXMODULE_API mxmodule_composition*
mxmodule_compose_file(const mxmodule_module* module, const void* content, size_t size,
                      const char* file, mxmodule_value_check check, mxmodule_error** error);

/// Frees `composition`.
MXMODULE_API void mxmodule_composition_free(mxmodule_composition* composition);

/// Returns the raw parameter image and stores its number of bytes in `size`. As long as
/// `composition`.
MXMODULE_API const unsigned char*
mxmodule_composition_image(const mxmodule_composition* composition, size_t* size);

/// Returns the Modbus registers of the image, in the byte order of the computer, and stores their
/// number in `count`; none if the image has no Modbus form. As long as `composition`.
MXMODULE_API const uint16_t* mxmodule_composition_registers(const mxmodule_composition* composition,
                                                            size_t* count);

/// Returns why the image has no Modbus form as JSON, schema "mxmodule.findings" version 1; a null
/// pointer if it has one. As long as `composition`.
MXMODULE_API const char* mxmodule_composition_no_registers(const mxmodule_composition* composition);

/// Returns every side effect as JSON, schema "mxmodule.findings" version 1; a null pointer if there
/// is none. As long as `composition`.
MXMODULE_API const char* mxmodule_composition_findings(const mxmodule_composition* composition);

/// A parameter image and the values in it. The caller frees it. It never changes.
typedef struct mxmodule_configuration mxmodule_configuration;

/// Returns the values in the `size` bytes at `bytes`, which are the raw image or, for Modbus, the
/// registers. Errors call them `place`, which may be null.
MXMODULE_API mxmodule_configuration* mxmodule_decode(const mxmodule_module* module,
                                                     const void* bytes, size_t size,
                                                     mxmodule_fieldbus fieldbus, const char* place,
                                                     mxmodule_error** error);

/// Returns the configuration of the raw image of `size` bytes at `image` on `fieldbus`; a null
/// pointer: that of the default image.
MXMODULE_API mxmodule_configuration* mxmodule_configure(const mxmodule_module* module,
                                                        const void* image, size_t size,
                                                        mxmodule_fieldbus fieldbus,
                                                        mxmodule_error** error);

/// Frees `configuration`.
MXMODULE_API void mxmodule_configuration_free(mxmodule_configuration* configuration);

/// Returns the raw parameter image.
MXMODULE_API mxmodule_bytes*
mxmodule_configuration_image(const mxmodule_configuration* configuration, mxmodule_error** error);

/// Returns the bytes that the master writes: the image, or the registers, each with its high byte
/// first.
MXMODULE_API mxmodule_bytes*
mxmodule_configuration_bytes(const mxmodule_configuration* configuration, mxmodule_error** error);

/// Returns bytes and values as JSON, schema "mxtool.config" version 1.
MXMODULE_API mxmodule_bytes*
mxmodule_configuration_json(const mxmodule_configuration* configuration, mxmodule_listing listing,
                            mxmodule_error** error);

/// Returns the same as a table for people.
MXMODULE_API mxmodule_bytes*
mxmodule_configuration_text(const mxmodule_configuration* configuration, mxmodule_listing listing,
                            mxmodule_error** error);

/// Returns the table as CSV, as `mxmodule_channels_csv` does.
MXMODULE_API mxmodule_bytes* mxmodule_configuration_csv(const mxmodule_configuration* configuration,
                                                        mxmodule_listing listing, char separator,
                                                        int byte_order_mark,
                                                        mxmodule_error** error);

/// Returns the values as a file (YAML) to be edited, with ranges, options and defaults.
MXMODULE_API mxmodule_bytes*
mxmodule_configuration_values(const mxmodule_configuration* configuration, mxmodule_listing listing,
                              mxmodule_error** error);

/// Returns notes on the bytes as JSON, schema "mxmodule.findings" version 1.
MXMODULE_API mxmodule_bytes*
mxmodule_configuration_findings(const mxmodule_configuration* configuration,
                                mxmodule_error** error);

/// A comparison of two configurations. The caller frees it. It never changes.
typedef struct mxmodule_comparison mxmodule_comparison;

/// Compares `read` with `wanted`, which is of the same module type and fieldbus. `place` is where
/// `read` comes from, for messages; may be null.
MXMODULE_API mxmodule_comparison* mxmodule_compare(const mxmodule_configuration* wanted,
                                                   const mxmodule_configuration* read,
                                                   const char* place, mxmodule_error** error);

/// Frees `comparison`.
MXMODULE_API void mxmodule_comparison_free(mxmodule_comparison* comparison);

/// Returns the differences as JSON, schema "mxtool.config-comparison" version 1.
MXMODULE_API mxmodule_bytes* mxmodule_comparison_json(const mxmodule_comparison* comparison,
                                                      mxmodule_error** error);

/// Returns the differences as a table for people.
MXMODULE_API mxmodule_bytes* mxmodule_comparison_text(const mxmodule_comparison* comparison,
                                                      mxmodule_error** error);

/// Returns the same table as CSV, as `mxmodule_channels_csv` does.
MXMODULE_API mxmodule_bytes* mxmodule_comparison_csv(const mxmodule_comparison* comparison,
                                                     char separator, int byte_order_mark,
                                                     mxmodule_error** error);

/// Returns a warning about differing bits of no parameter as JSON, schema "mxmodule.findings"
/// version 1.
MXMODULE_API mxmodule_bytes* mxmodule_comparison_findings(const mxmodule_comparison* comparison,
                                                          mxmodule_error** error);

#ifdef __cplusplus
}
#endif
