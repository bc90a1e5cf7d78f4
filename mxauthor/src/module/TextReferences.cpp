#include "module/TextReferences.h"

namespace mxauthor {

namespace {

class References
{
public:
    void add(const Field<std::uint16_t>& id, const std::string& subject, const char* what)
    {
        all.push_back({id.value, id.place, subject, what});
    }

    // For the fields in which 0 means "none".
    void addUnlessNone(const Field<std::uint16_t>& id, const std::string& subject, const char* what)
    {
        if (id.value != 0) {
            add(id, subject, what);
        }
    }

    std::vector<TextReference> all;
};

void addOptions(const ModuleView& module, References& references)
{
    const auto* const lists = module.content<OptionLists>(mxformat::group::optionLists);
    for (std::size_t i = 0; lists != nullptr && i < lists->lists.size(); ++i) {
        const std::string subject = named("option list", lists->lists[i].id.value, "");
        for (const Option& option : lists->lists[i].options) {
            references.add(option.textId, subject, "option");
        }
    }
}

void addConversions(const ModuleView& module, References& references)
{
    const auto* const conversions = module.content<Conversions>(mxformat::group::conversions);
    for (std::size_t i = 0; conversions != nullptr && i < conversions->entries.size(); ++i) {
        const Conversion& entry = conversions->entries[i];
        references.addUnlessNone(entry.unitId, named("conversion", entry.id.value, ""), "unit");
    }
}

void addChannelNames(const ModuleView& module, References& references)
{
    const auto* const names = module.content<ChannelNames>(mxformat::group::channelNames);
    for (std::size_t i = 0; names != nullptr && i < names->entries.size(); ++i) {
        const ChannelName& entry = names->entries[i];
        references.add(entry.textId, named("channel", entry.channel.value, ""), "name");
    }
}

} // namespace

std::vector<TextReference> textReferences(const ModuleView& module)
{
    References references;
    for (const ModuleView::Parameter& parameter : module.parameters()) {
        const ParameterRecord& record = *parameter.record;
        const std::string subject = named("parameter", record.number.value, parameter.name);
        references.add(record.nameId, subject, "name");
        references.addUnlessNone(record.unitId, subject, "unit");
    }
    addOptions(module, references);
    addConversions(module, references);
    addChannelNames(module, references);
    if (const auto* extension = module.content<Extension>(mxformat::group::extension)) {
        references.addUnlessNone(extension->gtinId, "", "GTIN");
    }
    return references.all;
}

} // namespace mxauthor
