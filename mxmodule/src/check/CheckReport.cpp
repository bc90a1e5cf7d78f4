#include "mxmodule/Check.h"

#include "check/FileCheck.h"

#include <devices/parser/mx/HexText.h>
#include <mxauthor/Check.h>
#include <text/JsonText.h>
#include <text/Utf8.h>

namespace mxmodule {

namespace {

template <typename Value>
text::Json orNull(const std::optional<Value>& value)
{
    return value ? text::Json(*value) : text::Json();
}

text::Json findingJson(const CheckFinding& found)
{
    return {{"rule", found.rule},
            {"severity", severityName(found.finding.severity)},
            {"line", orNull(found.line)},
            {"column", orNull(found.column)},
            {"offset", found.offset},
            {"length", found.length},
            {"group", found.group ? text::Json(devices::parser::mx::u16AsHex(
                                        static_cast<std::uint16_t>(*found.group)))
                                  : text::Json()},
            {"subject", found.subject},
            {"text", found.text}};
}

text::Json fileJson(const CheckedFile& file)
{
    return {{"file", text::toUtf8(file.name)},
            {"findings", text::listJson(file.findings, findingJson)}};
}

text::Json ruleJson(const CheckRule& rule)
{
    return {{"name", rule.name},
            {"severity", severityName(rule.severity)},
            {"explanation", rule.explanation},
            {"example", rule.example}};
}

} // namespace

std::vector<CheckRule> checkRules()
{
    std::vector<CheckRule> rules;
    for (const mxauthor::CheckRule* rule : mxauthor::checkRules()) {
        rules.push_back({rule->name, severityOf(rule->severity), rule->explanation,
                         text::toUtf8(rule->example)});
    }
    return rules;
}

std::size_t countOf(Severity severity, const std::vector<CheckedFile>& files)
{
    std::size_t count = 0;
    for (const CheckedFile& file : files) {
        for (const CheckFinding& found : file.findings) {
            count += found.finding.severity == severity ? 1 : 0;
        }
    }
    return count;
}

std::string checkJson(const std::vector<CheckedFile>& files)
{
    return text::jsonText({{"schema", text::jsonSchema("mxtool.check", 2)},
                           {"files", text::listJson(files, fileJson)},
                           {"errors", countOf(Severity::Error, files)},
                           {"warnings", countOf(Severity::Warning, files)},
                           {"notes", countOf(Severity::Note, files)}});
}

std::string checkRulesJson()
{
    return text::jsonText({{"schema", text::jsonSchema("mxtool.check-rules", 1)},
                           {"rules", text::listJson(checkRules(), ruleJson)}});
}

} // namespace mxmodule
