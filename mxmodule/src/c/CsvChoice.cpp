#include "c/CsvChoice.h"

#include <mxmodule/c/CallFromC.h>

namespace mxmodule {

CsvStyle csvChoice(char separator, int byteOrderMark)
{
    if (separator != ',' && separator != ';' && separator != '\t') {
        misused("Found the separator of number " +
                std::to_string(static_cast<unsigned char>(separator)) +
                ", expected ',', ';' or a tab");
    }
    return {separator, byteOrderMark != 0};
}

} // namespace mxmodule
