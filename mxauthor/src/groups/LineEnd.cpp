#include "LineEnd.h"

namespace mxauthor {

void readLine(PayloadReader& in, Field<std::string>& text)
{
    in.textUpTo(text, '\r');
    in.literal('\r');
    in.literal('\n');
    if (text.value.find_first_of(std::string("\0\n", 2)) != std::string::npos) {
        throw UnexpectedShape();
    }
}

void writeLine(PayloadWriter& out, const Field<std::string>& text)
{
    out.text(text);
    out.literal('\r');
    out.literal('\n');
}

} // namespace mxauthor
