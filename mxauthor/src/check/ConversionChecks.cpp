#include "check/Checks.h"
#include <text/Counted.h>

#include <set>

namespace mxauthor {

namespace {

const CheckRule conversionRows[] = {
    {"conversion-table", error,
     "Group 20c2 does not hold a whole number of conversions. Readers then convert nothing.",
     "group 20c2: 1 byte after the last whole conversion: nothing is converted"},
    {"conversion-missing", error,
     "A parameter that is shown in physical units names a conversion that does not exist: its raw "
     "value is shown.",
     "group 20c0, parameter 2 \"Limit\": names conversion 5, which group 20c2 does not hold"},
    {"conversion-factor", error,
     "A factor of 0, or a factor or offset that is not finite. The conversion is ignored.",
     "group 20c2, conversion 1: its factor is 0, or its factor or offset is not finite: nothing is "
     "converted"},
    {"conversion-repeated", warning,
     "Two conversions have the same identifier. Only the first one is read.",
     "group 20c2, conversion 1: is repeated here, only the first one is read"},
    {"conversion-unused", note, "No parameter names the conversion.",
     "group 20c2, conversion 1: no parameter names it"},
    {"conversion-ignored", note,
     "A parameter names a conversion, but is not shown in physical units.",
     "group 20c0, parameter 2 \"Limit\": names conversion 1, but is not shown in physical units"},
};
const auto& [conversionTable, conversionMissing, conversionFactor, conversionRepeated,
             conversionUnused, conversionIgnored] = conversionRows;

bool isUsable(const Conversion& entry)
{
    return mxformat::isUsable(
        {mxformat::floatOf(entry.factor.value), mxformat::floatOf(entry.offset.value)});
}

void checkEntry(const Conversion& entry, bool isUsed, bool isFirst, Findings& findings)
{
    const std::string subject = named("conversion", entry.id.value, "");
    if (!isUsable(entry)) {
        findings.add(
            conversionFactor, entry.factor.place, subject,
            "its factor is 0, or its factor or offset is not finite: nothing is converted");
    }
    if (!isFirst) {
        findings.add(conversionRepeated, entry.id.place, subject,
                     "is repeated here, only the first one is read");
    } else if (!isUsed) {
        findings.add(conversionUnused, entry.id.place, subject, "no parameter names it");
    }
}

void checkReference(const ModuleView::Parameter& parameter, const std::set<std::uint8_t>& known,
                    Findings& findings)
{
    const ParameterRecord& record = *parameter.record;
    const std::string subject = named(parameter);
    const std::uint8_t id = record.conversion.value;
    if (id == 0) {
        return;
    }
    const std::string names = "names conversion " + std::to_string(id);
    if (!mxformat::isConverted(record.flags.value)) {
        findings.add(conversionIgnored, record.conversion.place, subject,
                     names + ", but is not shown in physical units");
    } else if (known.count(id) == 0) {
        findings.add(conversionMissing, record.conversion.place, subject,
                     names + ", which group 20c2 does not hold");
    }
}

void checkConversions(const ModuleView& module, Findings& findings)
{
    std::set<std::uint8_t> used;
    for (const ModuleView::Parameter& parameter : module.parameters()) {
        used.insert(parameter.record->conversion.value);
    }
    std::set<std::uint8_t> known;
    const auto& conversions = module.contentOrNone<Conversions>(mxformat::group::conversions);
    for (const Conversion& entry : conversions.entries) {
        const bool isFirst = known.insert(entry.id.value).second;
        checkEntry(entry, used.count(entry.id.value) != 0, isFirst, findings);
    }
    if (!conversions.rest.value.empty()) {
        findings.add(conversionTable, conversions.rest.place, "",
                     text::counted(conversions.rest.value.size(), "byte") +
                         " after the last whole conversion: nothing is converted");
    }
    for (const ModuleView::Parameter& parameter : module.parameters()) {
        checkReference(parameter, known, findings);
    }
}

} // namespace

const Check conversionCheck(conversionRows, checkConversions);

} // namespace mxauthor
