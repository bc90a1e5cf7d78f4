// The classes that a host creates by name from the loaded library, through Poco's class loader.

#include "devices/parser/mx/Parser_kv38.h"

#include <Poco/ClassLibrary.h>

POCO_BEGIN_MANIFEST(devices::parser::IDeviceParser)
POCO_EXPORT_CLASS(devices::parser::mx::Parser_kv38)
POCO_END_MANIFEST
