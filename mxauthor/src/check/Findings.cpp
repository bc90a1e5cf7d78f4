#include "check/Findings.h"

#include <algorithm>

namespace mxauthor {

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

} // namespace mxauthor
