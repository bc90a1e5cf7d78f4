#include "export/XmlText.h"

#include "export/CommentText.h"

#include <Poco/String.h>

#include <text/ShownText.h>
#include <text/Svg.h>

namespace mxstation {

std::string xmlText(const std::string& bytes)
{
    return Poco::replace(text::xmlEscaped(text::forTerminal(bytes)), "\"", "&quot;");
}

std::string xmlComment(const std::string& bytes)
{
    return "<!-- " + text::xmlAllowed(commentText(bytes, {"--"})) + " -->";
}

} // namespace mxstation
