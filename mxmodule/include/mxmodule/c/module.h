#pragma once

#include "mxmodule/MxmoduleApi.h"
#include "mxmodule/c/bytes.h"
#include "mxmodule/c/error.h"

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/// A module as its mx file describes it. The caller frees it. It never changes.
typedef struct mxmodule_module mxmodule_module;

/// Returns the module of the mx file, or of its text form, at `path`. Its data begins at the bytes
/// `input_offset` and `output_offset` of the process images.
MXMODULE_API mxmodule_module* mxmodule_load(const char* path, uint32_t input_offset,
                                            uint32_t output_offset, mxmodule_error** error);

/// Returns the module of the `size` bytes at `data`, an mx file or its text form, which errors call
/// `name`. The bytes are copied. Files that a text form names are read, see SECURITY.md.
MXMODULE_API mxmodule_module* mxmodule_from_bytes(const void* data, size_t size, const char* name,
                                                  uint32_t input_offset, uint32_t output_offset,
                                                  mxmodule_error** error);

/// Returns the same module with its data at other bytes of the process images.
MXMODULE_API mxmodule_module* mxmodule_at(const mxmodule_module* module, uint32_t input_offset,
                                          uint32_t output_offset, mxmodule_error** error);

/// Frees `module`.
MXMODULE_API void mxmodule_free(mxmodule_module* module);

/// Returns the name of its file, for messages.
MXMODULE_API mxmodule_bytes* mxmodule_name(const mxmodule_module* module, mxmodule_error** error);

/// Returns the label, as on the product.
MXMODULE_API mxmodule_bytes* mxmodule_label(const mxmodule_module* module, mxmodule_error** error);

/// Returns its identifier, eight hexadecimal digits.
MXMODULE_API mxmodule_bytes* mxmodule_module_id(const mxmodule_module* module,
                                                mxmodule_error** error);

/// Returns all of it as JSON, schema "mxtool.device" version 2: label, properties, channels,
/// parameters, sets, binary objects.
MXMODULE_API mxmodule_bytes* mxmodule_json(const mxmodule_module* module, mxmodule_error** error);

/// Returns all of it as tables for people.
MXMODULE_API mxmodule_bytes* mxmodule_text(const mxmodule_module* module, mxmodule_error** error);

/// Returns its texts as they are in the mx file, byte for byte, as JSON, schema
/// "mxmodule.raw-texts" version 1. Elsewhere texts that are not UTF-8 are read as Windows-1252.
MXMODULE_API mxmodule_bytes* mxmodule_raw_texts(const mxmodule_module* module,
                                                mxmodule_error** error);

/// Returns its data sheet, a page (HTML) that contains all that it shows.
MXMODULE_API mxmodule_bytes* mxmodule_datasheet(const mxmodule_module* module,
                                                mxmodule_error** error);

/// Returns the picture of the product as a URL that contains it ("data:image/png;base64,..."); of
/// no bytes if there is none.
MXMODULE_API mxmodule_bytes* mxmodule_product_picture(const mxmodule_module* module,
                                                      mxmodule_error** error);

/// Returns its default parameter image, at most 255 bytes.
MXMODULE_API mxmodule_bytes* mxmodule_default_image(const mxmodule_module* module,
                                                    mxmodule_error** error);

/// Stores the position of the parameter called `name` in `position`: "NAME", "CHANNEL/NAME" or
/// "#ID", as `mxmodule_assignment` has it. Returns 0 after a failure, otherwise 1. The error of an
/// unknown name lists the nearest ones.
MXMODULE_API int mxmodule_parameter_called(const mxmodule_module* module, const char* name,
                                           size_t* position, mxmodule_error** error);

/// Returns the channels in the process images as JSON, schema "mxtool.channels" version 1.
MXMODULE_API mxmodule_bytes* mxmodule_channels_json(const mxmodule_module* module,
                                                    mxmodule_error** error);

/// Returns the same as a table for people.
MXMODULE_API mxmodule_bytes* mxmodule_channels_text(const mxmodule_module* module,
                                                    mxmodule_error** error);

/// Returns the same as CSV. `separator` is ',', ';' or a tab; `byte_order_mark`: begin with one.
MXMODULE_API mxmodule_bytes* mxmodule_channels_csv(const mxmodule_module* module, char separator,
                                                   int byte_order_mark, mxmodule_error** error);

/// Returns the channels as IEC 61131-3 declarations of global variables.
MXMODULE_API mxmodule_bytes* mxmodule_channels_declarations(const mxmodule_module* module,
                                                            mxmodule_error** error);

/// Returns a picture of the process images, an SVG document.
MXMODULE_API mxmodule_bytes* mxmodule_channels_svg(const mxmodule_module* module,
                                                   mxmodule_error** error);

/// Returns the picture as text of 80 columns; `coloured`: with terminal colour codes.
MXMODULE_API mxmodule_bytes* mxmodule_channels_drawing(const mxmodule_module* module, int coloured,
                                                       mxmodule_error** error);

#ifdef __cplusplus
}
#endif
