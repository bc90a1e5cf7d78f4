#include "http/Refusal.h"

#include <text/JsonText.h>

namespace workbench {

Response refusal(unsigned status, const std::string& text, const std::string& hint)
{
    const text::Json finding = {{"severity", "error"},
                                {"place", ""},
                                {"line", nullptr},
                                {"column", nullptr},
                                {"text", text},
                                {"hint", hint},
                                {"accepted", text::Json::array()},
                                {"excerpt", ""}};
    Response response;
    response.status = status;
    response.type = "application/json";
    response.body = text::Json{{"findings", text::Json::array({finding})}}.dump();
    return response;
}

} // namespace workbench
