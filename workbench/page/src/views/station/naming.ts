import type { Entry } from "../../api/stationTypes";
import { texts } from "../../texts";
import type { Place } from "./rowPlaces";

/** Returns the last part of a path. */
function fileNameOf(reference: string): string {
  return reference.slice(reference.lastIndexOf("/") + 1);
}

/** Returns how an entry is called before it is planned. */
export function entryName(entry: Entry): string {
  if (entry.name !== "") return entry.name;
  if (entry.reference !== "") return fileNameOf(entry.reference);
  return entry.reserve?.name !== undefined && entry.reserve.name !== "" ? entry.reserve.name : texts.station.reserved;
}

export function placeName(place: Place): string {
  return place.module?.name ?? entryName(place.entry);
}
