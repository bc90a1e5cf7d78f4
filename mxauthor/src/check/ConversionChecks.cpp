#include "check/Checks.h"
#include "module/ConversionNumbers.h"
#include "mxauthor/Counted.h"

#include <set>

namespace mxauthor {

namespace {

bool isUsable(const Conversion& entry)
{
    return mxformat::isUsable({floatOf(entry.factor.value), floatOf(entry.offset.value)});
}

void checkEntry(const Conversion& entry, bool isUsed, bool isFirst, Findings& findings)
{
    const std::string subject = named("conversion", entry.id.value, "");
    if (!isUsable(entry)) {
        findings.add("conversion-factor", entry.factor.place, subject,
                     "its factor is 0, or a number of it is not finite: nothing is converted");
    }
    if (!isFirst) {
        findings.add("conversion-repeated", entry.id.place, subject,
                     "stands here again, only the first one is read");
    } else if (!isUsed) {
        findings.add("conversion-unused", entry.id.place, subject, "no parameter names it");
    }
}

void checkReference(const ModuleView::Parameter& parameter, const std::set<std::uint8_t>& known,
                    Findings& findings)
{
    const ParameterRecord& record = *parameter.record;
    const std::string subject = named("parameter", record.number.value, parameter.name);
    const std::uint8_t id = record.conversion.value;
    if (id == 0) {
        return;
    }
    const std::string names = "names conversion " + std::to_string(id);
    if ((record.flags.value & convertedFlag) == 0) {
        findings.add("conversion-ignored", record.conversion.place, subject,
                     names + ", but is not shown in physical units");
    } else if (known.count(id) == 0) {
        findings.add("conversion-missing", record.conversion.place, subject,
                     names + ", which group 20c2 does not hold");
    }
}

} // namespace

void checkConversions(const ModuleView& module, Findings& findings)
{
    std::set<std::uint8_t> used;
    for (const ModuleView::Parameter& parameter : module.parameters()) {
        used.insert(parameter.record->conversion.value);
    }
    std::set<std::uint8_t> known;
    const auto* const conversions = module.content<Conversions>(0x20C2);
    for (std::size_t i = 0; conversions != nullptr && i < conversions->entries.size(); ++i) {
        const Conversion& entry = conversions->entries[i];
        const bool isFirst = known.insert(entry.id.value).second;
        checkEntry(entry, used.count(entry.id.value) != 0, isFirst, findings);
    }
    if (conversions != nullptr && !conversions->rest.value.empty()) {
        findings.add("conversion-table", conversions->rest.place, "",
                     counted(conversions->rest.value.size(), "byte") +
                         " after the last whole conversion: nothing is converted");
    }
    for (const ModuleView::Parameter& parameter : module.parameters()) {
        checkReference(parameter, known, findings);
    }
}

} // namespace mxauthor
