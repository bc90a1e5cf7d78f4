#include "text/FileNamePart.h"

#include "text/Hexadecimal.h"

namespace text {

namespace {

bool isPlainInFileNames(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-' ||
           c == '_';
}

} // namespace

std::string fileNamePart(const std::string& bytes)
{
    return fileNamePart(bytes, std::string::npos);
}

std::string fileNamePart(const std::string& bytes, std::size_t most)
{
    std::string part;
    for (const char c : bytes) {
        const std::string shown = isPlainInFileNames(c)
                                      ? std::string(1, c)
                                      : "%" + hexOf(static_cast<unsigned char>(c), 2);
        if (shown.size() > most - part.size()) {
            break;
        }
        part += shown;
    }
    return part;
}

} // namespace text
