#include "mxauthor/Check.h"

#include "check/Checks.h"

#include <devices/parser/mx/HexText.h>

#include <algorithm>

namespace mxauthor {

namespace {

// In the order in which the documentation lists the rules.
const Check* const checks[] = {&fileCheck,  &groupCheck,      &identityCheck,   &sizeCheck,
                               &textCheck,  &optionListCheck, &conversionCheck, &parameterCheck,
                               &valueCheck, &channelCheck,    &parserCheck};

std::vector<const CheckRule*> rulesOfChecks()
{
    std::vector<const CheckRule*> rules;
    for (const Check* subject : checks) {
        for (const CheckRule* rule = subject->begin; rule != subject->end; ++rule) {
            rules.push_back(rule);
        }
    }
    return rules;
}

} // namespace

const std::vector<const CheckRule*>& checkRules()
{
    static const std::vector<const CheckRule*> rules = rulesOfChecks();
    return rules;
}

std::string describe(const Finding& finding)
{
    std::string where;
    if (finding.inGroup) {
        where = "group " + devices::parser::mx::u16AsHex(finding.place.group);
        if (!finding.subject.empty()) {
            where += ", " + finding.subject;
        }
        where += ": ";
    }
    return where + finding.text;
}

void Findings::add(const CheckRule& rule, const Place& place, const std::string& subject,
                   const std::string& text)
{
    all.push_back({&rule, place, true, subject, text, {}});
}

void Findings::addToFile(const CheckRule& rule, const Place& place, const std::string& text)
{
    add(rule, place, "", text);
    all.back().inGroup = false;
}

void Findings::addDefault(const CheckRule& rule, const Place& place, const Place& parameter,
                          const std::string& subject, const std::string& text)
{
    add(rule, place, subject, text);
    all.back().parameter = parameter;
}

std::vector<Finding> Findings::sorted() &&
{
    std::stable_sort(all.begin(), all.end(), [](const Finding& a, const Finding& b) {
        return a.place.offset < b.place.offset;
    });
    return std::move(all);
}

void checkRead(const std::vector<char>& bytes, const ReadGroups& read, Findings& findings)
{
    if (read.failure) {
        // The content after the failure is unknown, so nothing can be reported missing.
        checkFraming(bytes, read.file, findings);
        return;
    }
    const ModuleView module(read.file);
    for (const Check* subject : checks) {
        if (subject->walk != nullptr) {
            subject->walk(module, findings);
        }
    }
}

std::vector<Finding> checkContent(const std::vector<char>& bytes)
{
    Findings findings;
    checkRead(bytes, readWholeGroups(bytes), findings);
    return std::move(findings).sorted();
}

} // namespace mxauthor
