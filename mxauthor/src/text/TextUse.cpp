#include "TextUse.h"

#include <algorithm>

namespace mxauthor {

namespace {

// The identifiers of texts in the order in which building the text form uses them.
class UseOrder
{
public:
    explicit UseOrder(const DumpContext& dumpContext) : context(dumpContext)
    {
        addOptions();
        addConversions();
        addParameters();
        if (const auto* names = context.group<ChannelNames>(mxformat::group::channelNames)) {
            for (const ChannelName& entry : names->entries) {
                add(entry.textId.value);
            }
        }
        if (const auto* extension = context.group<Extension>(mxformat::group::extension)) {
            add(extension->gtinId.value);
        }
    }

    std::vector<std::uint16_t> ids; // each once

private:
    void add(std::uint16_t id)
    {
        if (context.isWrittenAsText(id) && seen.insert(id).second) {
            ids.push_back(id);
        }
    }

    // For fields in which 0 means no text.
    void addUnit(std::uint16_t id)
    {
        if (id != 0) {
            add(id);
        }
    }

    void addOptions()
    {
        const auto* lists = context.group<OptionLists>(mxformat::group::optionLists);
        for (std::size_t i = 0; lists != nullptr && i < lists->lists.size(); ++i) {
            for (const Option& option : lists->lists[i].options) {
                add(option.textId.value);
            }
        }
    }

    void addConversions()
    {
        const auto* conversions = context.group<Conversions>(mxformat::group::conversions);
        for (std::size_t i = 0; conversions != nullptr && i < conversions->entries.size(); ++i) {
            addUnit(conversions->entries[i].unitId.value);
        }
    }

    void addParameters()
    {
        const auto* parameters = context.group<Parameters>(mxformat::group::parameters);
        for (std::size_t i = 0; parameters != nullptr && i < parameters->records.size(); ++i) {
            add(parameters->records[i].nameId.value);
            addUnit(parameters->records[i].unitId.value);
        }
    }

    const DumpContext& context;
    std::set<std::uint16_t> seen;
};

} // namespace

std::size_t fixedTextCount(const TextTable& table, const DumpContext& context)
{
    const std::vector<std::uint16_t> used = UseOrder(context).ids;
    std::map<std::uint16_t, std::size_t> rankOf;
    for (std::size_t i = 0; i < used.size(); ++i) {
        rankOf.emplace(used[i], i);
    }
    // From the end back, as long as the texts are used, in their order.
    std::size_t count = table.texts.size();
    std::size_t rank = used.size();
    while (count > 0) {
        const auto found = rankOf.find(table.texts[count - 1].id.value);
        if (found == rankOf.end() || found->second >= rank) {
            break;
        }
        rank = found->second;
        --count;
    }
    return count;
}

} // namespace mxauthor
