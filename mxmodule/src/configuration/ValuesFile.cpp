#include "configuration/ValuesFile.h"

#include "FindingAdvice.h"
#include "HexBytes.h"
#include "InvalidInput.h"
#include "SourcePlace.h"
#include <mxmodule/Finding.h>

#include <mxauthor/Utf8.h>
#include <mxauthor/YamlDocument.h>
#include <mxmodule/FileKind.h>

#include <fmt/format.h>
#include <mxauthor/ForeignContent.h>
#include <nlohmann/json.hpp>
#include <text/Beginning.h>
#include <text/ControlCharacters.h>
#include <text/FileExtension.h>
#include <text/Utf8.h>
#include <yaml-cpp/yaml.h>

#include <algorithm>
#include <optional>
#include <set>
#include <string>

namespace mxmodule {

namespace {

constexpr const char* writtenSchema = "mxtool.config";

bool isDigits(const std::string& text)
{
    return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

// The hint for a number with a decimal comma at the end of `text`; empty if there is none.
std::string decimalPointHint(const std::string& text)
{
    const std::size_t comma = text.rfind(',');
    if (comma == std::string::npos || !isDigits(text.substr(comma + 1))) {
        return "";
    }
    const std::string before = text.substr(0, comma);
    const std::string whole = before.substr(before.find_last_not_of("0123456789") + 1);
    return whole.empty()
               ? ""
               : fmt::format("numbers have a decimal point: {}.{}", whole, text.substr(comma + 1));
}

std::string placeOf(const YAML::Mark& mark, const std::string& file)
{
    return mark.is_null() ? file : fmt::format("{}:{}:{}", file, mark.line + 1, mark.column + 1);
}

[[noreturn]] void fail(const YAML::Mark& mark, const std::string& file, const std::string& text,
                       const std::string& hint = {})
{
    throw Failure(Origin::Input, placeOf(mark, file), text, hint);
}

std::string shownNode(const YAML::Node& node)
{
    switch (node.Type()) {
    case YAML::NodeType::Sequence:
        return "a list";
    case YAML::NodeType::Map:
        return "a map";
    case YAML::NodeType::Scalar:
        return "\"" + text::abbreviated(node.Scalar()) + "\"";
    default:
        return "nothing";
    }
}

std::string textOf(const YAML::Node& node, const std::string& file, const char* what)
{
    if (!node.IsScalar()) {
        fail(node.Mark(), file, fmt::format("Found {}, expected {}", shownNode(node), what));
    }
    return node.Scalar();
}

// The assignments of a map; `owner` is the prefix of its names for a channel, or empty.
void addAssignments(const YAML::Node& map, const std::string& owner, const std::string& file,
                    std::vector<Assignment>& assignments)
{
    std::string before; // the value of the previous entry
    for (const auto& entry : map) {
        const std::string name = owner + textOf(entry.first, file, "the name of a parameter");
        if (entry.second.IsNull()) { // "{a: 9,5}" has the value 9 and the key 5
            fail(entry.second.Mark(), file, "Found nothing, expected the value of a parameter",
                 decimalPointHint(before + "," + entry.first.Scalar()));
        }
        if (entry.second.IsMap() && owner.empty()) {
            addAssignments(entry.second, name + "/", file, assignments);
            continue;
        }
        const std::string value = textOf(entry.second, file, "the value of a parameter");
        addAssignment({name, value, placeOf(entry.first.Mark(), file), Origin::Input}, assignments);
        before = value;
    }
}

// The YAML library would use the first of two members of the same name.
void requireUniqueMembers(const YAML::Node& root, const std::string& file)
{
    std::set<std::string> names;
    for (const auto& member : root) {
        if (member.first.IsScalar() && !names.insert(member.first.Scalar()).second) {
            fail(member.first.Mark(), file,
                 fmt::format("The member {} occurs twice", shownNode(member.first)));
        }
    }
}

// The module that the values are for; empty if not stated.
std::string deviceTypeIdIn(const YAML::Node& root, const std::string& file)
{
    const YAML::Node id = root["device_type_id"];
    return id.IsDefined() ? textOf(id, file, "a device type such as \"kv38.5a030304\"") : "";
}

// Output of `mxtool config --format json`.
Values readWritten(const YAML::Node& root, const std::string& file)
{
    const YAML::Node schema = root["schema"];
    if (schema["name"].as<std::string>("") != writtenSchema ||
        schema["version"].as<std::string>("") != "1") {
        fail(schema.Mark(), file,
             fmt::format("Found another schema, expected {} version 1", writtenSchema));
    }
    requireUniqueMembers(root, file);
    Values values;
    values.deviceTypeId = deviceTypeIdIn(root, file);
    const YAML::Node image = root["image"];
    const YAML::Node assigned = root["values"];
    if (!image.IsDefined() || !assigned.IsDefined() || !assigned.IsMap()) {
        fail(root.Mark(), file, "Expected the members \"image\" and \"values\"");
    }
    try {
        values.image = bytesOfHex(textOf(image, file, "the bytes of a parameter image"));
    } catch (const InvalidInput& invalid) {
        fail(image.Mark(), file, invalid.what());
    }
    addAssignments(assigned, "", file, values.assignments);
    return values;
}

Values readMap(const YAML::Node& root, const std::string& file)
{
    Values values;
    if (root.IsNull()) {
        return values;
    }
    if (!root.IsMap()) {
        fail(root.Mark(), file,
             fmt::format("Found {}, expected a map of parameter names to values", shownNode(root)));
    }
    // A parameter may be called "schema"; only a map of that name is the schema member.
    if (root["schema"].IsDefined() && root["schema"].IsMap() && root["schema"]["version"]) {
        return readWritten(root, file);
    }
    addAssignments(root, "", file, values.assignments);
    return values;
}

// YAML accepts more than JSON allows: a file .json must be valid JSON.
void checkJson(const std::string& content, const std::string& file)
{
    try {
        const auto ignored = nlohmann::json::parse(content);
    } catch (const nlohmann::json::parse_error& failure) {
        const std::string before = content.substr(0, failure.byte == 0 ? 0 : failure.byte - 1);
        const auto line = std::count(before.begin(), before.end(), '\n');
        const std::size_t column = before.size() - (before.rfind('\n') + 1);
        const std::string text = failure.what();
        throw Failure(Origin::Input, fmt::format("{}:{}:{}", file, line + 1, column + 1),
                      "Cannot read the values: " +
                          text.substr(std::min(text.find("syntax error"), text.size())),
                      decimalPointHint(content.substr(0, failure.byte)));
    } catch (const nlohmann::json::exception& failure) {
        const std::string text = failure.what(); // "[json.exception.KIND.NUMBER] REASON"
        throw Failure(Origin::Input, file,
                      "Cannot read the values: " + text.substr(text.find("] ") + 2));
    }
}

Values readText(const std::string& content, const std::string& file)
{
    if (text::endsInExtension(file, ".csv")) {
        return readValuesCsv(content, file);
    }
    if (text::endsInExtension(file, ".json")) {
        checkJson(content, file);
    }
    if (const auto mistake = mxauthor::findYamlMistake(content, "a file holds one map of values")) {
        throw Failure(Origin::Input, placeInText(file, *mistake),
                      "Cannot read the values: " + mistake->text);
    }
    return readMap(YAML::Load(content), file);
}

// Many bytes of a parameter image are small numbers; a text may contain a stray zero byte.
bool isBinary(const std::string& content)
{
    return content.find('\0') != std::string::npos &&
           text::countOfControls(content) >= content.size() / 4;
}

// Whether `content` may be a parameter image, as bytes or as text. UTF-16 contains zeros too.
bool isImage(const std::string& content)
{
    const bool isHexadecimal =
        content.find_first_not_of("0123456789abcdefABCDEFx, \t\r\n") == std::string::npos;
    return !content.empty() && !text::isUtf16(content) && (isHexadecimal || isBinary(content));
}

// The kind of `content`; nothing if it may contain values.
std::optional<std::string> nameOfOther(const std::string& content, FileKind kind)
{
    if (kind == FileKind::Values || kind == FileKind::Configuration) {
        return std::nullopt;
    }
    if (kind != FileKind::Other) {
        return nameOf(kind);
    }
    const auto foreign = mxauthor::foreignContent(content);
    return !foreign && isImage(content) ? "an image of bytes" : foreign;
}

void advise(const std::string& content, FileKind kind, Finding& finding)
{
    const std::string& file = finding.place;
    if (kind == FileKind::MxFile || kind == FileKind::TextForm) {
        finding.hint = "mxtool config " + (isPath(file) ? file : "FILE") +
                       " --format values writes one to start from";
    } else if (kind == FileKind::Other && isImage(content)) {
        giveAdvice(finding, Advice::ReadAsImage);
    } else {
        finding.hint = callThatTakes(kind, file);
    }
}

std::optional<Failure> otherThanValues(const std::string& content, const std::string& file)
{
    const FileKind kind = kindOf(content);
    const auto found = nameOfOther(content, kind);
    if (!found) {
        return std::nullopt;
    }
    Finding finding{Severity::Error, file,
                    "This is " + *found + ", expected a file of names and values"};
    advise(content, kind, finding);
    return Failure(std::move(finding));
}

} // namespace

void addAssignment(const Assignment& assignment, std::vector<Assignment>& assignments)
{
    constexpr std::size_t most = 10000;
    if (assignments.size() == most) {
        throw Failure(assignment.origin, assignment.place,
                      fmt::format("More than {} values, no module has so many parameters", most));
    }
    assignments.push_back(assignment);
}

Values readValues(const std::string& content, const std::string& file)
{
    const auto other = otherThanValues(content, file);
    const auto error = mxauthor::findNonUtf8(content);
    if (other && (error || content.find('\0') != std::string::npos)) {
        throw Failure(*other);
    }
    if (error) {
        throw Failure(Origin::Input, placeInText(file, *error), error->text);
    }
    // A map of values may have a key that is also one of the text form: "module" is the module
    // itself.
    try {
        return readText(content, file);
    } catch (const Failure&) {
        if (other) {
            throw Failure(*other);
        }
        throw;
    }
}

} // namespace mxmodule
