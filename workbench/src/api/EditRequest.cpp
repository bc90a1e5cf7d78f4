#include "api/EditRequest.h"

#include "api/CallFailure.h"
#include "http/Status.h"

#include <fmt/format.h>
#include <text/Beginning.h>

namespace workbench {

namespace {

using mxstation::StationEdit;

StationEdit addIn(const RequestBody& body)
{
    return mxstation::AddModule{body.number("before"), body.text("reference"),
                                body.textOr("name", "")};
}

StationEdit reserveIn(const RequestBody& body)
{
    return mxstation::AddReserve{body.number("before"), body.number("in"), body.number("out"),
                                 body.textOr("name", "")};
}

StationEdit moveIn(const RequestBody& body)
{
    return mxstation::MoveEntry{body.number("entry"), body.number("before")};
}

StationEdit removeIn(const RequestBody& body)
{
    return mxstation::RemoveEntry{body.number("entry")};
}

StationEdit nameIn(const RequestBody& body)
{
    return mxstation::NameEntry{body.number("entry"), body.text("name")};
}

StationEdit sizeIn(const RequestBody& body)
{
    return mxstation::SetReserve{body.number("entry"), body.number("in"), body.number("out")};
}

StationEdit valueIn(const RequestBody& body)
{
    return mxstation::SetValue{body.number("entry"), body.text("parameter"),
                               body.textOrNull("value")};
}

StationEdit channelIn(const RequestBody& body)
{
    return mxstation::NoteChannel{body.number("entry"), body.text("channel"), body.text("alias"),
                                  body.text("comment")};
}

StationEdit pinIn(const RequestBody& body)
{
    return mxstation::PinEntry{body.number("entry"), body.numberOrNull("in"),
                               body.numberOrNull("out")};
}

StationEdit pinAllIn(const RequestBody& /*body*/)
{
    return mxstation::PinAll{};
}

struct EditKind
{
    const char* kind;
    StationEdit (*read)(const RequestBody& body);
};

constexpr EditKind editKinds[] = {
    {"add", addIn},   {"reserve", reserveIn}, {"move", moveIn},   {"remove", removeIn},
    {"name", nameIn}, {"size", sizeIn},       {"value", valueIn}, {"channel", channelIn},
    {"pin", pinIn},   {"pinAll", pinAllIn},
};

} // namespace

mxstation::StationEdit editIn(const RequestBody& body)
{
    const std::string wanted = body.text("kind");
    std::string accepted;
    for (const EditKind& one : editKinds) {
        if (wanted == one.kind) {
            return one.read(body);
        }
        accepted += (accepted.empty() ? "" : ", ") + std::string(one.kind);
    }
    throw CallFailure(status::badRequest, fmt::format("edit.kind: found \"{}\", expected one of {}",
                                                      text::abbreviated(wanted), accepted));
}

} // namespace workbench
