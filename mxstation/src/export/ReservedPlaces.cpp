#include "export/ReservedPlaces.h"

#include "export/ByteText.h"

namespace mxstation {

std::map<std::size_t, ReservedPlace> reservedPlaces(const Plan& plan)
{
    std::map<std::size_t, ReservedPlace> places;
    for (const Gap& gap : plan.gaps) {
        if (gap.entry) {
            ReservedPlace& place = places[*gap.entry];
            place.name = gap.name;
            (gap.isInput ? place.input : place.output) = touchedBytes(gap);
        }
    }
    return places;
}

} // namespace mxstation
