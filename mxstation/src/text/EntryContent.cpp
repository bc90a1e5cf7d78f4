#include "text/EntryContent.h"

#include <algorithm>

namespace mxstation {

namespace {

bool isSameReserve(const std::optional<Reserve>& a, const std::optional<Reserve>& b)
{
    return a.has_value() == b.has_value() &&
           (!a || (a->name == b->name && isSameByte(a->size.input, b->size.input) &&
                   isSameByte(a->size.output, b->size.output)));
}

bool isSameNote(const ChannelNote& a, const ChannelNote& b)
{
    return a.channel == b.channel && a.alias == b.alias && a.comment == b.comment;
}

bool isSameValue(const StatedValue& a, const StatedValue& b)
{
    return a.name == b.name && a.value == b.value;
}

} // namespace

bool isSameByte(const std::optional<StatedByte>& a, const std::optional<StatedByte>& b)
{
    return a.has_value() == b.has_value() && (!a || a->value == b->value);
}

bool isSameBesidesParameters(const Entry& a, const Entry& b)
{
    return a.reference == b.reference && a.name == b.name && isSameReserve(a.reserve, b.reserve) &&
           std::equal(a.channels.begin(), a.channels.end(), b.channels.begin(), b.channels.end(),
                      isSameNote);
}

bool isSameChannels(const Entry& a, const Entry& b)
{
    return std::is_permutation(a.channels.begin(), a.channels.end(), b.channels.begin(),
                               b.channels.end(), isSameNote);
}

bool isSameParameters(const Entry& a, const Entry& b)
{
    return std::equal(a.parameters.begin(), a.parameters.end(), b.parameters.begin(),
                      b.parameters.end(), isSameValue);
}

} // namespace mxstation
