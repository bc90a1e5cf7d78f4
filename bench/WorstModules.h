#pragma once

#include <cstddef>
#include <vector>

namespace bench {

/// The content of an mx file whose translation costs as much as its size allows.
enum class WorstShape
{
    OneLongOptionList,    ///< Every parameter names the same options.
    DistinctTexts,        ///< Every parameter has a text of its own, the last of the table first.
    ChannelsOfParameters, ///< Every channel has every parameter.
    ChannelNames,         ///< The name of every channel is the last in the list of names.
    LongTexts,            ///< Every parameter has the same long text as name and as unit.
    LongOptionTexts,      ///< Every parameter has the same options, all of the same long text.
    OptionLists,          ///< As many option lists as possible, all with the same identifier.
    Groups                ///< As many groups as possible, all with the same identifier.
};

/// Returns an mx file of that shape of nearly, and at most, `size` bytes. It can be translated, and
/// configured on every fieldbus.
std::vector<char> worstModule(WorstShape shape, std::size_t size);

} // namespace bench
