import type { ConfigParameter, Device, DeviceParameter } from "../api/types";
import { texts } from "../texts";

/** The parameters of a channel, or those of the module itself. */
export interface Group {
  key: string;
  title: string;
  parameters: readonly DeviceParameter[];
}

function titleOf(device: Device, channel: number | null): string {
  if (channel === null) return texts.parameters.ofModule;
  const name = device.channels.find((one) => one.number === channel)?.name ?? "";
  return texts.parameters.channel(channel, name);
}

/** Returns the groups in the order of their first parameters. */
export function groupsOf(device: Device): readonly Group[] {
  const groups = new Map<number | null, DeviceParameter[]>();
  for (const one of device.parameters) {
    const group = groups.get(one.channel);
    if (group === undefined) groups.set(one.channel, [one]);
    else group.push(one);
  }
  return [...groups].map(([channel, parameters]) => ({
    key: channel === null ? "module" : String(channel),
    title: titleOf(device, channel),
    parameters,
  }));
}

/** Returns the configured parameters by identifier. */
export function byId(parameters: readonly ConfigParameter[]): ReadonlyMap<string, ConfigParameter> {
  return new Map(parameters.map((one) => [one.id, one]));
}
