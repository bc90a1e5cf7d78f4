#include <mxmodule/c/CallFromC.h>

namespace mxmodule {

Fieldbus fieldbusOf(mxmodule_fieldbus fieldbus)
{
    switch (fieldbus) {
    case MXMODULE_RAW:
        return Fieldbus::Raw;
    case MXMODULE_MODBUS:
        return Fieldbus::Modbus;
    }
    misused("Found the fieldbus " + std::to_string(int{fieldbus}) + ", expected 0 or 1");
}

CsvStyle csvStyleOf(char separator, int byteOrderMark)
{
    if (separator != ',' && separator != ';' && separator != '\t') {
        misused("Found the separator of number " +
                std::to_string(static_cast<unsigned char>(separator)) +
                ", expected ',', ';' or a tab");
    }
    return {separator, byteOrderMark != 0};
}

} // namespace mxmodule
