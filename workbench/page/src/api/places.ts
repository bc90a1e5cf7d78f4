// The bits of channels, which the server states beside the objects of mxtool.

import type { Place } from "./types";

interface Answer {
  channels?: { channels: Place[] } | null;
  places?: Place[];
}

/** Returns the answer with the bits of each channel in it. */
export function withPlaces<A extends Answer>(answer: A): A {
  const { channels, places } = answer;
  if (!channels || places === undefined) return answer;
  const placed = channels.channels.map((channel, index) => ({ ...channel, ...places[index] }));
  return { ...answer, channels: { ...channels, channels: placed } };
}
