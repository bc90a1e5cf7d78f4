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
    const auto& group = module.contentOrNone<OptionLists>(mxformat::group::optionLists);
    for (const OptionList& list : group.lists) {
        const std::string subject = named("option list", list.id.value, "");
        for (const Option& option : list.options) {
            references.add(option.textId, subject, "option");
        }
    }
}

void addConversions(const ModuleView& module, References& references)
{
    const auto& group = module.contentOrNone<Conversions>(mxformat::group::conversions);
    for (const Conversion& entry : group.entries) {
        references.addUnlessNone(entry.unitId, named("conversion", entry.id.value, ""), "unit");
    }
}

void addChannelNames(const ModuleView& module, References& references)
{
    const auto& group = module.contentOrNone<ChannelNames>(mxformat::group::channelNames);
    for (const ChannelName& entry : group.entries) {
        references.add(entry.textId, named("channel", entry.channel.value, ""), "name");
    }
}

} // namespace

std::vector<TextReference> textReferences(const ModuleView& module)
{
    References references;
    for (const ModuleView::Parameter& parameter : module.parameters()) {
        const ParameterRecord& record = *parameter.record;
        const std::string subject = named(parameter);
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
