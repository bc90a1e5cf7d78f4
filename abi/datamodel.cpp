// What abidw describes of the data model, which is headers alone and in no library: one function
// that takes each class that hosts and parsers hand each other.

#include <datamodel/DataModel.h>
#include <devices/database/DeviceProperties.h>
#include <devices/parser/IDeviceParser.h>
#include <devices/parser/mx/MxChannelPrivateProps.h>
#include <devices/parser/mx/MxParameterPrivateProps.h>

namespace described {

void host(devices::parser::IDeviceParser*, devices::parser::IDeviceParser::ChannelMappingInfo,
          devices::parser::FieldbusType, devices::database::DeviceProperties)
{}

void objects(datamodel::BaseObject*, datamodel::Attribute*, datamodel::CatalogDeviceInfo,
             datamodel::Device, datamodel::ParamDevice, datamodel::Channel, datamodel::Parameter,
             datamodel::ParameterOption, datamodel::ParameterValueRange, datamodel::StaticProperty,
             datamodel::Set, datamodel::Role, datamodel::BinaryObject)
{}

void records(datamodel::Device_p<devices::database::DeviceProperties>,
             datamodel::Channel_p<devices::parser::mx::MxChannelPrivateProps>,
             datamodel::Parameter_p<devices::parser::mx::MxParameterPrivateProps>)
{}

} // namespace described
