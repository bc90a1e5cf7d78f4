// What the server states beside the objects of mxtool, put into them.

import type { Device, Place } from "./types";

interface Answer {
  channels?: { channels: Place[] } | null;
  places?: Place[];
  device?: Device;
  callTexts?: Readonly<Record<string, readonly string[]>>;
}

function withPlaces<A extends Answer>(answer: A): A {
  const { channels, places } = answer;
  if (!channels || places === undefined) return answer;
  const placed = channels.channels.map((channel, index) => ({ ...channel, ...places[index] }));
  return { ...answer, channels: { ...channels, channels: placed } };
}

function withCallTexts<A extends Answer>(answer: A): A {
  const { device, callTexts } = answer;
  if (device === undefined || callTexts === undefined) return answer;
  const parameters = device.parameters.map((one) => {
    const words = callTexts[`#${one.id}`] ?? [];
    return { ...one, options: one.options.map((option, index) => ({ ...option, callText: words[index] ?? "" })) };
  });
  return { ...answer, device: { ...device, parameters } };
}

/** Returns the answer with the bits of each channel in it, and with what selects each option of a parameter. */
export function combined<A extends Answer>(answer: A): A {
  return withCallTexts(withPlaces(answer));
}
