#include "api/AnswerText.h"

#include <text/ShownText.h>

namespace workbench {

AnswerText& AnswerText::add(const char* name, const text::Json& value)
{
    return addText(name, text::harmlessJson(value.dump()));
}

AnswerText& AnswerText::addText(const char* name, const std::string& json)
{
    members += members.size() == 1 ? "" : ",";
    members += '"';
    members += name;
    members += "\":";
    members += json.empty() ? "null" : json;
    return *this;
}

Response AnswerText::response(unsigned status) const
{
    Response response;
    response.status = status;
    response.body = text() + "\n";
    return response;
}

} // namespace workbench
