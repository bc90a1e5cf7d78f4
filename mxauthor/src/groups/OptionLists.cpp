#include "GroupCodecs.h"

namespace mxauthor {

namespace {

constexpr std::size_t listHeaderSize = 2;
constexpr std::size_t optionSize = 10;

bool wholeListFollows(const PayloadReader& in)
{
    return in.left() >= listHeaderSize && in.left() >= listHeaderSize + optionSize * in.peek(1);
}

} // namespace

void read(PayloadReader& in, OptionLists& group)
{
    while (wholeListFollows(in)) {
        OptionList& list = group.lists.emplace_back();
        in.field(list.id);
        in.field(list.count);
        list.options.resize(list.count.value);
        for (Option& option : list.options) {
            in.field(option.value);
            in.field(option.textId);
        }
    }
    in.rest(group.rest);
}

void write(PayloadWriter& out, const OptionLists& group)
{
    for (const OptionList& list : group.lists) {
        out.field(list.id);
        out.count(list.count, list.options.size());
        for (const Option& option : list.options) {
            out.field(option.value);
            out.field(option.textId);
        }
    }
    out.rest(group.rest);
}

} // namespace mxauthor
