#include "api/RequestBody.h"

#include "api/CallFailure.h"
#include "http/Status.h"

#include <fmt/format.h>
#include <text/Beginning.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace workbench {

namespace {

constexpr int mostLevels = 32;

// The levels are counted before there are objects of them, whose destructors would call themselves.
text::Json parsed(const std::string& content)
{
    const auto rejectDeep = [](int depth, text::Json::parse_event_t /*event*/,
                               text::Json& /*value*/) {
        if (depth > mostLevels) {
            throw CallFailure(status::badRequest,
                              fmt::format("The body has more than {} levels, expected "
                                          "the object of the call",
                                          mostLevels));
        }
        return true;
    };
    try {
        return text::Json::parse(content, rejectDeep);
    } catch (const text::Json::parse_error& error) {
        throw CallFailure(
            status::badRequest,
            fmt::format("The body is no JSON at byte {}, expected an object", error.byte));
    } catch (const text::Json::out_of_range&) {
        throw CallFailure(status::badRequest, "The body has a number of more than 308 digits, "
                                              "expected at most 4294967295");
    }
}

std::string shown(const text::Json* value)
{
    return value == nullptr ? "nothing"
                            : text::abbreviated(
                                  value->dump(-1, ' ', true, text::Json::error_handler_t::replace));
}

} // namespace

RequestBody::RequestBody(const std::string& content) : RequestBody(parsed(content), "") {}

RequestBody::RequestBody(text::Json part, const std::string& place)
    : json(std::move(part)), path(place)
{
    if (!json.is_object()) {
        throw CallFailure(status::badRequest,
                          fmt::format("{}: found {}, expected an object",
                                      path.empty() ? "body" : path.substr(0, path.size() - 1),
                                      shown(&json)));
    }
}

const text::Json* RequestBody::find(const std::string& name) const
{
    const auto found = json.find(name);
    return found == json.end() || found->is_null() ? nullptr : &*found;
}

void RequestBody::refuse(const std::string& name, const char* expected) const
{
    throw CallFailure(status::badRequest, fmt::format("{}{}: found {}, expected {}", path, name,
                                                      shown(find(name)), expected));
}

const text::Json& RequestBody::at(const std::string& name, const char* expected) const
{
    const text::Json* const value = find(name);
    if (value == nullptr) {
        refuse(name, expected);
    }
    return *value;
}

std::string RequestBody::textIn(const text::Json& value, const std::string& name) const
{
    if (!value.is_string()) {
        refuse(name, "a text");
    }
    return value.get<std::string>();
}

std::uint32_t RequestBody::numberIn(const text::Json& value, const std::string& name) const
{
    if (!value.is_number_unsigned() ||
        value.get<std::uint64_t>() > std::numeric_limits<std::uint32_t>::max()) {
        refuse(name, "a whole number from 0 to 4294967295");
    }
    return value.get<std::uint32_t>();
}

std::string RequestBody::text(const std::string& name) const
{
    return textIn(at(name, "a text"), name);
}

std::string RequestBody::textOr(const std::string& name, const std::string& absent) const
{
    return textOrNull(name).value_or(absent);
}

std::optional<std::string> RequestBody::textOrNull(const std::string& name) const
{
    const text::Json* const value = find(name);
    return value == nullptr ? std::nullopt : std::optional<std::string>(textIn(*value, name));
}

std::uint32_t RequestBody::number(const std::string& name) const
{
    return numberIn(at(name, "a whole number from 0 to 4294967295"), name);
}

std::optional<std::uint32_t> RequestBody::numberOrNull(const std::string& name) const
{
    const text::Json* const value = find(name);
    return value == nullptr ? std::nullopt : std::optional<std::uint32_t>(numberIn(*value, name));
}

bool RequestBody::isSet(const std::string& name) const
{
    const text::Json* const value = find(name);
    if (value != nullptr && !value->is_boolean()) {
        refuse(name, "true or false");
    }
    return value != nullptr && value->get<bool>();
}

std::size_t RequestBody::choice(const std::string& name,
                                const std::vector<std::string>& words) const
{
    const std::string found = textOr(name, words.front());
    const auto word = std::find(words.begin(), words.end(), found);
    if (word == words.end()) {
        throw CallFailure(status::badRequest,
                          fmt::format("{}{}: found \"{}\", expected one of {}", path, name,
                                      text::abbreviated(found), fmt::join(words, ", ")));
    }
    return static_cast<std::size_t>(word - words.begin());
}

std::vector<std::string> RequestBody::texts(const std::string& name) const
{
    std::vector<std::string> all;
    if (const text::Json* const list = find(name)) {
        if (!list->is_array()) {
            refuse(name, "a list of texts");
        }
        for (const text::Json& one : *list) {
            all.push_back(textIn(one, name));
        }
    }
    return all;
}

std::vector<RequestBody> RequestBody::objects(const std::string& name) const
{
    std::vector<RequestBody> all;
    if (const text::Json* const list = find(name)) {
        if (!list->is_array()) {
            refuse(name, "a list of objects");
        }
        for (std::size_t i = 0; i < list->size(); ++i) {
            all.push_back(RequestBody((*list)[i], fmt::format("{}{}[{}].", path, name, i)));
        }
    }
    return all;
}

std::optional<RequestBody> RequestBody::object(const std::string& name) const
{
    const text::Json* const value = find(name);
    return value == nullptr ? std::nullopt
                            : std::optional<RequestBody>(RequestBody(*value, path + name + "."));
}

} // namespace workbench
