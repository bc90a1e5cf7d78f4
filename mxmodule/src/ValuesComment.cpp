#include "ValuesComment.h"

namespace mxmodule {

namespace {

const std::string readerLine = "# Read by: mxtool config FILE --values THIS";
const std::string standardMark = "; default ";

} // namespace

std::string valuesTitle(const std::string& title)
{
    return "# " + title + "\n" + readerLine + "\n";
}

std::string valuesComment(const std::string& accepted, const std::string& standard,
                          const std::string& remark)
{
    return accepted + standardMark + standard + (remark.empty() ? "" : "; " + remark);
}

bool hasValuesMark(const std::string& content)
{
    const std::size_t second = content.find('\n');
    return second != std::string::npos &&
           content.compare(second + 1, readerLine.size(), readerLine) == 0;
}

bool isValuesComment(const std::string& comment, std::size_t line)
{
    return line == 1 || comment == readerLine || comment.find(standardMark) != std::string::npos;
}

} // namespace mxmodule
