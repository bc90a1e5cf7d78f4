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
     ""},
    {"framing", error,
     "The length of a group leads beyond the end or is below the least, or the content length is "
     "above the size of the file. Nothing behind it can be read.",
     ""},
    {"content-length", warning,
     "The content length of the header is not the size of the file. Readers stop at it.", ""},
    {"header-missing", note,
     "Without a header nobody notices when a file was cut between two groups.", ""},
    {"trailing-bytes", warning,
     "Bytes behind the last group or the content length. Nobody reads them.", ""},
    // Groups.
    {"group-missing", error, "A group that every module must have is missing.", ""},
    {"repeated-group", warning, "A group stands twice. Only the first one is ever read.", ""},
    {"unknown-group", note,
     "The identifier is none of the format. Readers skip the group; makers keep private data in "
     "such groups.",
     ""},
    {"group-shape", error,
     "The payload does not have the shape of its group: a line or a record without its end, or a "
     "size that ends a list early. Readers differ in what they take of it.",
     ""},
    {"dead-record", warning,
     "Bytes behind the last whole record of a group. Readers ignore them, or read a record that "
     "runs into the next group.",
     ""},
    {"unread-bytes", note, "Bytes of a group that nobody reads.", ""},
    // Identity.
    {"identity-missing", error, "Group 0001 holds no dataset 0xfb with module type and identifier.",
     ""},
    {"identity-size", error, "The dataset 0xfb has to have 5 bytes: module type and identifier.",
     ""},
    {"entry-missing", error, "An entry that every module must have is missing.", ""},
    {"entry-unreachable", error,
     "An entry that is empty and stands last in its group is not found: readers try a line only "
     "while more bytes than its shortest form are left.",
     ""},
    {"entry-repeated", warning, "A key stands twice in a group. Only the first entry is read.", ""},
    {"extension-version", error, "The version of group 20f0 has to be 1.", ""},
    {"date-cut", note,
     "The calibration date has ten characters. Readers take nine: databases hold no more.", ""},
    {"image-empty", warning, "Group 20f1 is there, but holds no product image.", ""},
    {"image-unreadable", error,
     "The product image has to be an SVG compressed with gzip (SVGZ): it is inflated, and has to "
     "be "
     "well-formed XML with the root element \"svg\".",
     ""},
    // Sizes.
    {"block-version", error, "The version of group 0010 has to be 0.", ""},
    {"block-limit", error,
     "A parameter block has 255 bytes at most. One of 256 bytes is stored empty, a larger one is "
     "refused.",
     ""},
    {"block-size", error,
     "The parameter size that group 0011 states has to be that of the parameter block.", ""},
    {"data-size-code", error,
     "Behind a key of group 0011 only D, W and B stand for sizes; \"s\", blank, comma and \"=\" "
     "separate.",
     ""},
    {"input-size", error,
     "The input channels reach beyond the input data that group 0011 states: other modules' data "
     "stand there.",
     ""},
    {"output-size", error,
     "The output channels reach beyond the output data that group 0011 states: they write to other "
     "modules.",
     ""},
    {"data-without-channel", note, "Group 0011 states more data than the channels take.", ""},
    // Texts.
    {"text-missing", error, "A name, unit, option or the GTIN refers to a text that is not there.",
     ""},
    {"text-repeated", warning, "Two texts have one identifier. Only the first one is read.", ""},
    {"text-unused", note, "Nothing refers to the text; a group of the maker may do so.", ""},
    {"text-control", warning,
     "A text holds control characters, which displays show as something else.", ""},
    // Options and conversions.
    {"option-list-missing", error,
     "A parameter names an option list that is not there: it can take no value at all.", ""},
    {"option-list-ignored", warning,
     "The option list of a parameter that is shown in physical units is not read.", ""},
    {"option-list-wide", warning,
     "Modbus registers compare the first byte of a value with the last byte of the options. That "
     "can hold for parameters of one byte only.",
     ""},
    {"option-list-empty", warning, "An option list without options.", ""},
    {"option-list-repeated", note,
     "Two option lists have one identifier. Readers join them, in file order.", ""},
    {"option-list-unused", note, "No parameter names the option list.", ""},
    {"option-value", error,
     "The datatype or bit field of a parameter cannot hold the value of one of its options.", ""},
    {"option-repeated", warning,
     "Two options of a parameter have one value. The text of the second is never shown.", ""},
    {"conversion-table", error,
     "Group 20c2 is no whole number of conversions. Readers then convert nothing at all.", ""},
    {"conversion-missing", error,
     "A parameter that is shown in physical units names a conversion that is not there: its raw "
     "value is shown.",
     ""},
    {"conversion-factor", error,
     "A factor of 0, or a factor or offset that is not finite. The conversion is left out.", ""},
    {"conversion-repeated", warning,
     "Two conversions have one identifier. Only the first one is read.", ""},
    {"conversion-unused", note, "No parameter names the conversion.", ""},
    {"conversion-ignored", note,
     "A parameter names a conversion, but is not shown in physical units.", ""},
    // Parameters.
    {"parameter-datatype", error, "The datatype of a parameter has to be 1 to 9.", ""},
    {"bit-field", error, "A bit field has to lie within its byte.", ""},
    {"parameter-outside", error,
     "The value of a parameter lies outside the parameter block: it has no value and cannot be "
     "set.",
     ""},
    {"parameter-overlap", error,
     "Two parameters share bits of the parameter block: setting one changes the other.", ""},
    {"block-gap", note, "A byte of the parameter block belongs to no parameter.", ""},
    {"parameter-channel", error,
     "A parameter belongs to a channel that does not exist. It is in no set and in no register.",
     ""},
    {"parameter-unnamed", warning, "The name of a parameter is an empty text.", ""},
    {"parameter-repeated", warning,
     "Two parameters have one number, so messages do not tell them apart.", ""},
    {"range-datatype", error,
     "The datatype or bit field of a parameter cannot hold its minimum or maximum. Readers take "
     "the "
     "last bytes.",
     ""},
    {"range-order", error, "The minimum is above the maximum: no value is accepted.", ""},
    {"default-range", error, "The default of a parameter lies outside its range.", ""},
    {"default-option", error,
     "The default of a parameter is none of its options. It has no Modbus register.", ""},
    // Channels.
    {"channel-kind", warning,
     "The kind of a channel stands for no data: it gets no symbol and no address. Kind 31 says "
     "that "
     "on purpose.",
     ""},
    {"channel-bits", warning,
     "The number of bits is not that of the channel's kind, or no bit field of one byte.", ""},
    {"channel-repeated", warning,
     "Two channels have one number. Its parameters stand in the Modbus registers once for each; an "
     "input and an output without parameters may share one.",
     ""},
    {"channel-overlap", error, "Two channels share bits of a process image.", ""},
    {"symbol-repeated", error, "Two channels have one IEC symbol.", ""},
    {"channel-unaligned", note,
     "The rules for addresses put a channel at a byte that is no multiple of its size. Modules do "
     "so; processors and fieldbuses may mind.",
     ""},
    {"channel-unnamed", note,
     "A channel has no entry in group 20d7. It is called \"channel_\" and its number.", ""},
    {"channel-name-repeated", warning,
     "A channel has two entries in group 20d7. Only the first one is read.", ""},
    {"channel-name-unused", warning, "Group 20d7 names a channel that does not exist.", ""},
    // Readers.
    {"parser-refuses", error, "The device parser refuses the file, with this message.", ""},
    {"modbus-refuses", error,
     "The default parameters have no Modbus registers; the device parser says why.", ""},
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
