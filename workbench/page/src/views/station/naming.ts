import type { Entry } from "../../api/stationTypes";
import { texts } from "../../texts";
import type { Place } from "./rowPlaces";

/** Returns how an entry is called, in a text with errors too. */
export function entryName(entry: Entry): string {
  if (entry.plannedName !== "") return entry.plannedName;
  return entry.reserve?.name !== undefined && entry.reserve.name !== "" ? entry.reserve.name : texts.station.reserved;
}

export function placeName(place: Place): string {
  return place.module?.name ?? entryName(place.entry);
}
