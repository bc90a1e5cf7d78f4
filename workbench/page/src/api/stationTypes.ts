// The objects of the station's calls, as docs/workbench-api.md and docs/json-output.md describe them.

import type { Configured, CsvChoice, DeviceChannel, Finding, ModuleDescription, NamedValue, Place } from "./types";

export interface Extent {
  offset: number;
  size: number;
}

export interface StationModule {
  position: number;
  name: string;
  module_id: string;
  label: string;
  reference: string;
  device_type_id: string;
  in: Extent;
  out: Extent;
  parameters: { size: number; registers: number | null };
}

export interface Gap {
  image: "in" | "out";
  reason: "padding" | "reserved" | "status" | "no channel";
  offset: number;
  size: number;
  bit: number;
  bits: number;
  module: number | null;
  name: string;
}

/** mxtool.station */
export interface StationPlan {
  station: string;
  station_sha256: string;
  layout: { name: string; most_modules: number; byte_order: string };
  input: Extent;
  output: Extent;
  modules: StationModule[];
  gaps: Gap[];
  totals: { modules: number; in: number; out: number; parameters: number; registers: number };
}

export interface StationChannel extends DeviceChannel, Place {
  module: number;
  module_name: string;
  alias: string;
  comment: string;
  area: string;
  mask: number;
}

export type UnplacedChannel = Pick<StationChannel, "module" | "module_name" | "id" | "number" | "name" | "direction">;

/** mxtool.station-channels */
export interface StationChannels {
  channels: StationChannel[];
  without_symbol: UnplacedChannel[];
}

export interface ChannelNote {
  channel: string;
  alias: string;
  comment: string;
}

/** An entry of the row as the text states it; `position` counts modules from 1, null: a reserved place. */
export interface Entry {
  index: number;
  position: number | null;
  /** Its bytes in the images; null: none, or the text has errors. */
  planned: { in: Extent | null; out: Extent | null };
  reference: string;
  name: string;
  /** Its own or that of its file; "" of a reserved place. */
  plannedName: string;
  reserve: { in: number | null; out: number | null; name: string } | null;
  at: { in: number | null; out: number | null };
  line: number;
  parameters: NamedValue[];
  channels: ChannelNote[];
}

export interface ConfiguredModule extends Partial<ModuleDescription> {
  position: number;
  entry: number;
  configured: Configured;
}

export interface StationAnswer {
  text: string;
  version: string;
  isPlanned: boolean;
  findings: Finding[];
  refused: Finding[];
  entries: Entry[];
  plan: StationPlan | null;
  channels: StationChannels | null;
  places: Place[];
  module: ConfiguredModule | null;
}

/** A change of the text. Entries count from 0; `before` is the entry after the place, their number: the end. */
export type Edit =
  | { kind: "add"; before: number; reference: string; name?: string }
  | { kind: "reserve"; before: number; in: number; out: number; name?: string }
  | { kind: "move"; entry: number; before: number }
  | { kind: "remove"; entry: number }
  | { kind: "name"; entry: number; name: string }
  | { kind: "size"; entry: number; in: number; out: number }
  | { kind: "value"; entry: number; parameter: string; value: string | null }
  | { kind: "channel"; entry: number; channel: string; alias: string; comment: string }
  | { kind: "pin"; entry: number; in: number | null; out: number | null }
  | { kind: "pinAll" };

export interface StationQuestion {
  text: string;
  edit?: Edit;
  module?: number;
  describe?: boolean;
}

export interface StationExportChoice extends CsvChoice {
  format: string;
  module?: number;
  address?: "byte" | "index" | "separate";
  scope?: "global" | "program";
}
