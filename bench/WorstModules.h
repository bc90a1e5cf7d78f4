#pragma once

#include <cstddef>
#include <vector>

namespace bench {

/// What an mx file is made of so that translating it costs as much as its size allows.
enum class WorstShape
{
    OneLongOptionList,    ///< Every parameter names the same options.
    DistinctTexts,        ///< Every parameter names a text of its own, the last of the table first.
    ChannelsOfParameters, ///< Every channel has every parameter.
    ChannelNames,         ///< The name of every channel stands last in the list of names.
    LongTexts,            ///< Every parameter has the same long text as name and as unit.
    LongOptionTexts,      ///< Every parameter has the same options, all of the same long text.
    OptionLists,          ///< As many option lists as bytes allow, all of one identifier.
    Groups                ///< As many groups as bytes allow, all of one identifier.
};

/// Returns the bytes of an mx file of that shape, at most `size` of them and nearly as many. It can
/// be translated, and configured on every fieldbus.
std::vector<char> worstModule(WorstShape shape, std::size_t size);

} // namespace bench
