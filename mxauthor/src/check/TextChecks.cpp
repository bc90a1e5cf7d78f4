#include "check/Checks.h"
#include "module/TextReferences.h"

#include <text/ControlCharacters.h>

#include <algorithm>
#include <set>

namespace mxauthor {

namespace {

const CheckRule textRows[] = {
    {"text-missing", error,
     "A name, unit, option or the GTIN refers to a text that does not exist.",
     "group 20c0, parameter 1: name is text 999, which group 20d3 does not hold"},
    {"text-repeated", warning, "Two texts have the same identifier. Only the first one is read.",
     "group 20d3, text 100 \"ms\": the identifier is repeated here, only the first text is read"},
    {"text-unused", note,
     "Nothing refers to the text; a private group of the manufacturer may do so.",
     "group 20d3, text 112 \"ms\": nothing refers to it"},
    {"text-control", warning,
     "A text holds control characters, which displays show as something else.",
     "group 20d3, text 100 \"\x1bilter\": holds control characters"},
    {"text-quotes", warning,
     "A text is in typographic quotation marks, which are part of it and shown. In a text form "
     "only \" and ' are quotation marks.",
     "group 20d3, text 100 \"\x93ilte\x94\": its quotation marks are part of it",
     "quotation marks of YAML are \" and '"},
};
const auto& [textMissing, textRepeated, textUnused, textControl, textQuotes] = textRows;

// Whether the Windows-1252 text begins and ends with typographic quotation marks.
bool isInTypographicQuotes(const std::string& text)
{
    static const std::string marks = "\x82\x84\x91\x92\x93\x94";
    return text.size() > 1 && marks.find(text.front()) != std::string::npos &&
           marks.find(text.back()) != std::string::npos;
}

void checkReferences(const ModuleView& module, const std::vector<TextReference>& references,
                     Findings& findings)
{
    for (const TextReference& reference : references) {
        if (module.text(reference.id) == nullptr) {
            findings.add(textMissing, reference.place, reference.subject,
                         std::string(reference.what) + " is text " + std::to_string(reference.id) +
                             ", which group 20d3 does not hold");
        }
    }
}

void checkText(const TextRecord& record, bool isFirst, bool isUsed, Findings& findings)
{
    const std::string subject = named("text", record.id.value, record.text.value);
    if (!isFirst) {
        findings.add(textRepeated, record.id.place, subject,
                     "the identifier is repeated here, only the first text is read");
    } else if (!isUsed) {
        findings.add(textUnused, record.id.place, subject, "nothing refers to it");
    }
    if (std::any_of(record.text.value.begin(), record.text.value.end(), text::isControl)) {
        findings.add(textControl, record.text.place, subject, "holds control characters");
    }
    if (isInTypographicQuotes(record.text.value)) {
        findings.add(textQuotes, record.text.place, subject, "its quotation marks are part of it");
    }
}

void checkTexts(const ModuleView& module, Findings& findings)
{
    const std::vector<TextReference> references = textReferences(module);
    const Group* const group = module.group(mxformat::group::texts);
    if (group != nullptr && std::holds_alternative<RawGroup>(group->content)) {
        return; // it is unknown which texts there are
    }
    checkReferences(module, references, findings);
    std::set<std::uint16_t> used;
    for (const TextReference& reference : references) {
        used.insert(reference.id);
    }
    for (const TextRecord& record : module.contentOrNone<TextTable>(mxformat::group::texts).texts) {
        checkText(record, module.text(record.id.value) == &record, used.count(record.id.value) != 0,
                  findings);
    }
}

} // namespace

const Check textCheck(textRows, checkTexts);

} // namespace mxauthor
