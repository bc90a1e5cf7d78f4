#include "mxauthor/Check.h"

#include <algorithm>

namespace mxauthor {

namespace {

constexpr Severity note = Severity::Note;
constexpr Severity warning = Severity::Warning;
constexpr Severity error = Severity::Error;

const std::vector<CheckRule> rules = {
    // The file.
    {"no-groups", error,
     "The file holds no group at all. Readers take it without complaint and fail at the first "
     "group "
     "that they look for.",
     "no group in 4 bytes"},
    {"framing", error,
     "The length of a group leads beyond the end or is below the least, or the content length is "
     "above the size of the file. Nothing behind it can be read.",
     "content length 755, the file has 754 bytes"},
    {"content-length", warning,
     "The content length of the header is not the size of the file. Readers stop at it.",
     "group 0000: content length 689, the file has 755 bytes"},
    {"header-missing", note,
     "Without a header nobody notices when a file was cut between two groups.",
     "no group 0000 states how long the file is"},
    {"trailing-bytes", warning,
     "Bytes after the last group or the content length. They are not read.",
     "3 bytes after the last group, not read"},
    // Groups.
    {"group-missing", error, "A group that every module must have is missing.",
     "group 0001 (module identity) is missing"},
    {"repeated-group", warning, "A group stands twice. Only the first one is ever read.",
     "group 0040: stands here again, only the first one is read"},
    {"unknown-group", note,
     "The identifier is none of the format. Readers skip the group; makers keep private data in "
     "such groups.",
     "group 7abc: not a group of the format, 5 bytes skipped"},
    {"group-shape", error,
     "The payload does not have the shape of its group: a line or a record without its end, or a "
     "size that ends a list early. Readers differ in what they take of it.",
     "group 0020: does not have the shape of this group, readers differ in what they take"},
    {"dead-record", warning,
     "Bytes after the last whole record of a group. Readers ignore them, or read a record that "
     "runs into the next group.",
     "group 20d0: 3 bytes after the last whole channel record"},
    {"unread-bytes", note, "Bytes of a group that nobody reads.",
     "group 20f0: 2 bytes behind the calibration date that nobody reads"},
    // Identity.
    {"identity-missing", error, "Group 0001 holds no dataset 0xfb with module type and identifier.",
     "group 0001: no dataset 0xfb with the module type and identifier"},
    {"identity-size", error, "The dataset 0xfb has to have 5 bytes: module type and identifier.",
     "group 0001, dataset 0xfb: has 4 bytes, expected 5: module type and identifier"},
    {"entry-missing", error, "An entry that every module must have is missing.",
     "group 0020: entry \"BrandId\" is missing, did you mean it by \"BrandiD\"?"},
    {"entry-unreachable", error,
     "An entry that is empty and stands last in its group is not found: readers try a line only "
     "while more bytes than its shortest form are left.",
     "group 0020, entry \"BrandHwRevision\": is empty and stands last, where readers do not find "
     "it"},
    {"entry-repeated", warning, "A key stands twice in a group. Only the first entry is read.",
     "group 0040, entry \"Component\": stands here again, only the first one is read"},
    {"extension-version", error, "The version of group 20f0 has to be 1.",
     "group 20f0: version 2, expected 1"},
    {"date-cut", note,
     "The calibration date has ten characters. Readers take nine: databases hold no more.",
     "group 20f0, calibration date: \"2024-05-31\" has 10 characters, readers take 9"},
    {"gtin-digits", warning, "A GTIN has 8, 12, 13 or 14 digits. Readers show what is there.",
     "group 20f0, GTIN: \"200000000001X\", expected 8, 12, 13 or 14 digits"},
    {"image-empty", warning, "Group 20f1 is there, but holds no product image.",
     "group 20f1: the product image is empty"},
    {"image-unreadable", error,
     "The product image has to be an SVG compressed with gzip (SVGZ): it is inflated, and has to "
     "be "
     "well-formed XML with the root element \"svg\".",
     "group 20f1: 1 byte after the compressed data"},
    // Sizes.
    {"block-version", error, "The version of group 0010 has to be 0.",
     "group 0010: version 1, expected 0"},
    {"block-limit", error,
     "A parameter block has 255 bytes at most. One of 256 bytes is stored empty, a larger one is "
     "refused.",
     "group 0010: 256 bytes of parameters, 255 at most: readers count them in a byte"},
    {"block-size", error,
     "The parameter size that group 0011 states has to be that of the parameter block.",
     "group 0011, Parameter: 5 bytes, the parameter block has 6"},
    {"data-size-code", error,
     "Behind a key of group 0011 only D, W and B stand for sizes; \"s\", blank, comma and \"=\" "
     "separate.",
     "group 0011, InData: 'Q' stands for no size, expected D, W or B"},
    {"input-size", error,
     "The input channels reach beyond the input data that group 0011 states: other modules' data "
     "stand there.",
     "group 0011, InData: 2 bytes, the channels take 3"},
    {"output-size", error,
     "The output channels reach beyond the output data that group 0011 states: they write to other "
     "modules.",
     "group 0011, OutData: 0 bytes, the channels take 1"},
    {"data-without-channel", note, "Group 0011 states more data than the channels take.",
     "group 0011, OutData: 2 bytes, the channels take 1"},
    // Texts.
    {"text-missing", error, "A name, unit, option or the GTIN refers to a text that is not there.",
     "group 20c0, parameter 1: name is text 999, which group 20d3 does not hold"},
    {"text-repeated", warning, "Two texts have one identifier. Only the first one is read.",
     "group 20d3, text 100 \"ms\": the identifier stands here again, only the first text is read"},
    {"text-unused", note, "Nothing refers to the text; a group of the maker may do so.",
     "group 20d3, text 112 \"ms\": nothing refers to it"},
    {"text-control", warning,
     "A text holds control characters, which displays show as something else.",
     "group 20d3, text 100 \"\x1b"
     "ilter\": holds control characters"},
    {"text-quotes", warning,
     "A text is in typographic quotation marks, which are part of it and shown. In a text form "
     "only "
     "\" and ' are quotation marks.",
     "group 20d3, text 100 \"\x93ilte\x94\": its quotation marks are part of it"},
    // Options and conversions.
    {"option-list-missing", error,
     "A parameter names an option list that is not there: it can take no value at all.",
     "group 20c0, parameter 1 \"Filter\": names option list 9, which group 20c1 does not hold"},
    {"option-list-ignored", warning,
     "The option list of a parameter that is shown in physical units is not read.",
     "group 20c0, parameter 2 \"Limit\": names option list 1, but is shown in physical units"},
    {"option-list-wide", warning,
     "Modbus registers compare the first byte of a value with the last byte of the options. That "
     "can hold for parameters of one byte only.",
     "group 20c0, parameter 4 \"Delay\": has options and 2 bytes, of which Modbus registers "
     "compare the first"},
    {"option-list-empty", warning, "An option list without options.",
     "group 20c1, option list 1: has no options"},
    {"option-list-repeated", note,
     "Two option lists have one identifier. Readers join them, in file order.",
     "group 20c1, option list 1: stands here again, its options are added to those in front"},
    {"option-list-unused", note, "No parameter names the option list.",
     "group 20c1, option list 2: no parameter names it"},
    {"option-value", error,
     "The datatype or bit field of a parameter cannot hold the value of one of its options.",
     "group 20c1, parameter 1 \"Filter\": its option value 300 does not fit in 8 bits"},
    {"option-repeated", warning,
     "Two options of a parameter have one value. The text of the second is never shown.",
     "group 20c1, parameter 1 \"Filter\": its option value 1 stands here again, the first text is "
     "shown"},
    {"conversion-table", error,
     "Group 20c2 is no whole number of conversions. Readers then convert nothing at all.",
     "group 20c2: 1 byte after the last whole conversion: nothing is converted"},
    {"conversion-missing", error,
     "A parameter that is shown in physical units names a conversion that is not there: its raw "
     "value is shown.",
     "group 20c0, parameter 2 \"Limit\": names conversion 5, which group 20c2 does not hold"},
    {"conversion-factor", error,
     "A factor of 0, or a factor or offset that is not finite. The conversion is left out.",
     "group 20c2, conversion 1: its factor is 0, or a number of it is not finite: nothing is "
     "converted"},
    {"conversion-repeated", warning,
     "Two conversions have one identifier. Only the first one is read.",
     "group 20c2, conversion 1: stands here again, only the first one is read"},
    {"conversion-unused", note, "No parameter names the conversion.",
     "group 20c2, conversion 1: no parameter names it"},
    {"conversion-ignored", note,
     "A parameter names a conversion, but is not shown in physical units.",
     "group 20c0, parameter 2 \"Limit\": names conversion 1, but is not shown in physical units"},
    // Parameters.
    {"parameter-datatype", error, "The datatype of a parameter has to be 1 to 9.",
     "group 20c0, parameter 1 \"Filter\": datatype 10, expected 1 to 9"},
    {"bit-field", error, "A bit field has to lie within its byte.",
     "group 20c0, parameter 3 \"Invert\": 3 bits from bit 6 leave their byte, bits 0 to 7"},
    {"bits-ignored", warning,
     "A number of bits or a bit offset is stated for a parameter of another datatype than Byte "
     "(5). Readers take all bits of the datatype.",
     "group 20c0, parameter 4 \"Delay\": 3 bits from bit 2 stated, which readers ignore: its "
     "datatype is UInt16, only a Byte has bit fields"},
    {"parameter-outside", error,
     "The value of a parameter lies outside the parameter block: it has no value and cannot be "
     "set.",
     "group 20c0, parameter 4 \"Delay\": bytes 5 to 6 of the block, which has 6 bytes"},
    {"parameter-overlap", error,
     "Two parameters share bits of the parameter block: setting one changes the other.",
     "group 20c0, parameter 2 \"Limit\": bytes 0 to 1 of the block, which it shares with parameter "
     "1 \"Filter\""},
    {"block-gap", note, "A byte of the parameter block belongs to no parameter.",
     "group 0010: byte 6 of the block belongs to no parameter"},
    {"parameter-channel", error,
     "A parameter belongs to a channel that does not exist. It is in no set and in no register.",
     "group 20c0, parameter 4 \"Delay\": belongs to channel 7, which does not exist"},
    {"parameter-unnamed", warning, "The name of a parameter is an empty text.",
     "group 20c0, parameter 1: its name is an empty text"},
    {"parameter-repeated", warning,
     "Two parameters have one number, so messages do not tell them apart.",
     "group 20c0, parameter 1 \"Delay\": another parameter has this number as well"},
    {"range-datatype", error,
     "The datatype or bit field of a parameter cannot hold its minimum or maximum. Readers take "
     "the "
     "last bytes.",
     "group 20c0, parameter 4 \"Delay\": maximum 70000 does not fit in 16 bits, 0 to 65535 is "
     "accepted"},
    {"range-order", error, "The minimum is above the maximum: no value is accepted.",
     "group 20c0, parameter 4 \"Delay\": minimum 600 is above maximum 500"},
    {"default-range", error, "The default of a parameter lies outside its range.",
     "group 0010, parameter 4 \"Delay\": default 501 lies outside 1 to 500"},
    {"default-option", error,
     "The default of a parameter is none of its options. It has no Modbus register.",
     "group 0010, parameter 1 \"Filter\": default 7 is none of its options"},
    // Channels.
    {"channel-kind", warning,
     "The kind of a channel stands for no data: it gets no symbol and no address. Kind 31 says "
     "that "
     "on purpose.",
     "group 20d0, channel 1 \"Input 2\": kind 11 stands for no data, expected 1 to 9"},
    {"channel-bits", warning,
     "The number of bits is not that of the channel's kind, or no bit field of one byte.",
     "group 20d0, channel 0 \"Input 1\": 8 bits stated, its kind has 16"},
    {"channel-repeated", warning,
     "Two channels have one number. Its parameters stand in the Modbus registers once for each; an "
     "input and an output without parameters may share one.",
     "group 20d0, channel 0 \"Input 1\": another channel has this number as well: name and "
     "parameters stand for both"},
    {"channel-overlap", error, "Two channels share bits of a process image.",
     "group 20d0, channel 3 \"Output 1\": QX0_0 shares bits with QX0_0 of channel 2 \"Output 1\""},
    {"symbol-repeated", error, "Two channels have one IEC symbol.",
     "group 20d0, channel 3 \"Output 1\": has the symbol QX0_0 of channel 2 \"Output 1\""},
    {"channel-unaligned", note,
     "The rules for addresses put a channel at a byte that is no multiple of its size. Modules do "
     "so; processors and fieldbuses may mind.",
     "group 20d0, channel 0 \"Input 1\": ID2 follows from the address rules, byte 2 is no multiple "
     "of 4"},
    {"channel-unnamed", note,
     "A channel has no entry in group 20d7. It is called \"channel_\" and its number.",
     "group 20d0, channel 2: has no name in group 20d7"},
    {"channel-name-repeated", warning,
     "A channel has two entries in group 20d7. Only the first one is read.",
     "group 20d7, channel 1: is named here again, only the first name is read"},
    {"channel-name-unused", warning, "Group 20d7 names a channel that does not exist.",
     "group 20d7, channel 9: is named here, but does not exist"},
    // Readers.
    {"parser-refuses", error, "The device parser refuses the file, with this message.",
     "group 0010: Invalid size property in group 0x0010 (2)"},
    {"modbus-refuses", error,
     "The default parameters have no Modbus registers; the device parser says why.",
     "group 20c0: Parameter out of bounds: Filter"},
};

} // namespace

const std::vector<CheckRule>& checkRules()
{
    return rules;
}

const CheckRule* findRule(const std::string& name)
{
    const auto found = std::find_if(rules.begin(), rules.end(),
                                    [&name](const CheckRule& rule) { return rule.name == name; });
    return found == rules.end() ? nullptr : &*found;
}

} // namespace mxauthor
