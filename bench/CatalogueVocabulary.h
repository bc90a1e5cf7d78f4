#pragma once

#include <vector>

namespace bench {

/// A kind of module as several vendors write it. In the forms {n} is the number of channels, {r} a
/// range, {x} an extra and {i} the number of a channel, from 1.
struct ModuleKind
{
    const char* letters; ///< Begin of its order codes.
    unsigned share;      ///< Of a catalogue, in percent.
    bool isInput;        ///< Else output.
    unsigned bits;       ///< Of a channel in the process image.
    std::vector<unsigned> channels;
    std::vector<const char*> labels;
    std::vector<const char*> channelNames;
    std::vector<const char*> ranges;
    std::vector<const char*> extras;
};

/// A parameter; one whose name has {i} exists once per channel.
struct ParameterForm
{
    const char* name;
    const char* unit; ///< Empty: none.
    unsigned bits;
};

/// Returns the kinds, whose shares add up to 100.
const std::vector<ModuleKind>& moduleKinds();

/// Returns what a label may have at its end.
const std::vector<const char*>& labelSuffixes();

/// Returns the names of further channels, one per channel, that tell its state.
const std::vector<const char*>& stateNames();

const std::vector<ParameterForm>& parameterForms();

/// Returns the lists of options that parameters have.
const std::vector<std::vector<const char*>>& optionLists();

} // namespace bench
