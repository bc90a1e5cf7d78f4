#pragma once

#include "datamodel/Channel.h"
#include "datamodel/Device.h"
#include "datamodel/Parameter.h"

namespace datamodel {

/// A device with a parser's own record appended. Reports the type code of `Device`.
template <class P>
class DATAMODEL_API Device_p : public Device
{
public:
    P privateProps{}; ///< The parser's record.
};

/// A channel with a parser's own record appended. Reports the type code of `Channel`.
template <class P>
class DATAMODEL_API Channel_p : public Channel
{
public:
    P privateProps{}; ///< The parser's record.
};

/// A parameter with a parser's own record appended. Reports the type code of `Parameter`.
template <class P>
class DATAMODEL_API Parameter_p : public Parameter
{
public:
    P privateProps{}; ///< The parser's record.
};

} // namespace datamodel
