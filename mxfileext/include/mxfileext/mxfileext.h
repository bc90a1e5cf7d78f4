#pragma once

#include "mxfileext/MxfileextApi.h"

#include <string>
#include <vector>

/// The companion library of the device parser: the coding of parameter values.
///
/// A parameter of datatype 5 is a bit field of one byte: the bits that its record states, with the
/// length 0 those from its bit offset up to bit 7. A field with a bit outside its byte (a bit
/// offset above 7, or more bits than there are from it on) has no value: reading it gives an absent
/// one, and writing or aligning it fails.
///
/// It keeps the parsed data of one mx file per module index; the parser always uses module 0. A
/// host may put a library of its own with these functions in its place. Not safe for concurrent
/// calls: `clearParsedData`, `parseGroup`, `getConvertedParameter` and `setParameter` throw
/// `std::logic_error` while another thread is in one of them.
namespace mxfileext {

/// A parameter's value and range, decoded from its record and the parameter block.
struct ParameterValue_t
{
    unsigned char datatype;   ///< Number of the parameter's datatype, 1 to 9; 0: none.
    bool present;             ///< False: the value does not lie in the parameter block.
    unsigned char value[8];   ///< The value, 8 bytes big-endian, sign-extended.
    unsigned char minimum[8]; ///< Lower bound in the same form.
    unsigned char maximum[8]; ///< Upper bound in the same form.
};

/// Forgets everything that is kept for `module`.
MXFILEEXT_API void clearParsedData(unsigned char module);

/// Takes note of one group of the mx file of `module`: `data` is the whole group record of `size`
/// bytes (identifier, length, payload, checksum). What is needed is copied. The first occurrence of
/// a group holds; a size below 6 is ignored.
MXFILEEXT_API void parseGroup(unsigned char module, unsigned short group, const unsigned char* data,
                              unsigned short size);

/// Sets the size in bytes of module 0's parameter block. `block` may be null with size 0; it is
/// not kept.
MXFILEEXT_API void initializeModule(char* block, unsigned short size);

/// Decodes value and range of the parameter whose 29-byte `record` is given from `block`, which has
/// the size given to `initializeModule`. Never fails: where `block` is null or the value lies
/// outside, the value is marked absent.
MXFILEEXT_API void getParameterValue(const unsigned char* record, const unsigned char* block,
                                     ParameterValue_t* out);

/// Gives value, minimum and maximum as decimal texts; an absent value is the empty text.
MXFILEEXT_API void parameterValueToString(const ParameterValue_t& parameter, std::string& value,
                                          std::string& min, std::string& max);

/// Gives value, minimum and maximum in physical units, raw * factor + offset, and the unit's text,
/// by the conversion that `record` names. Where there is none, or its factor is 0 or not finite, or
/// its offset is not finite, the factor is 1, the offset 0 and the unit empty. Each is the binary32
/// nearest to the exact number, so that large raw values share one: their text ("%f") is for
/// people, not for storing. An absent value counts as raw 0. For a negative factor minimum and
/// maximum change places.
MXFILEEXT_API void getConvertedParameter(unsigned char module, unsigned char* block,
                                         unsigned char* record, float* value, float* min,
                                         float* max, std::string& unit);

/// Zero-fills the 8 bytes at `out`, then writes the value's bytes as they are in `raw`; for a
/// `bitLength` or `bitOffset` above 0 the bit field, shifted down to bit 0, in `out[0]` (length 0:
/// from the offset up to bit 7). Throws `std::runtime_error` when the value lies outside `raw`, the
/// bit field outside its byte, or `dataSize` is above 8. It knows no parameter, so its messages
/// name none.
MXFILEEXT_API void getLeftAlignedRawParameter(const std::vector<char>& raw, unsigned char* out,
                                              unsigned char byteOffset, unsigned char dataSize,
                                              unsigned char bitOffset, unsigned char bitLength);

/// Writes `value` into the raw image `raw`, which has the size given to `initializeModule`. Only
/// the bits of the parameter change. Range and option list are not checked.
///
/// A parameter without conversion takes a decimal integer, one that is converted the physical value
/// as a decimal number, "9.5" or "95e-1". The raw value written is the one whose exact raw * factor
/// + offset, with the binary32 factor and offset of the mx file, is nearest to the number; half way
/// between two, the one away from zero. This holds for every raw value of 64 bits.
///
/// The text that `parameterValueToString` gives, or the "%f" of what `getConvertedParameter` gives,
/// for the value in `raw` leaves the image as it is, even where several raw values have
/// that text. The text of the lowest or highest value that the parameter can hold sets that value,
/// even where "%f" rounds it to a number beyond.
///
/// Throws `std::runtime_error` with the parameter's number, its name where the text table has one,
/// and `value`, the image unchanged, when the text is no number, the datatype or bit field cannot
/// hold the value, or its place lies outside the image. In the first two cases it says what the
/// parameter can hold and names up to twenty options of its list. Names and options are bytes of
/// the mx file, shortened and with control bytes spelled out: "\x1b".
MXFILEEXT_API void setParameter(unsigned char module, unsigned char* raw, unsigned char* record,
                                const std::string& value);

} // namespace mxfileext
