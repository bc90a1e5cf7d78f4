// One process image of the station as rows of bits, with the modules that the bytes belong to.

import type { Gap, StationChannel, StationModule, StationPlan } from "../../api/stationTypes";
import type { ImageRow } from "../module/imageRows";
import { imageRows } from "../module/imageRows";

type Side = "in" | "out";

/** Consecutive bytes of one module, or of none. */
export interface Band {
  first: number;
  module: StationModule | null;
  /** Why no module has them. */
  gap: Gap | null;
  rows: readonly ImageRow[];
}

function moduleAt(plan: StationPlan, side: Side, byte: number): StationModule | null {
  return plan.modules.find((one) => byte >= one[side].offset && byte < one[side].offset + one[side].size) ?? null;
}

function gapAt(plan: StationPlan, side: Side, byte: number): Gap | null {
  return plan.gaps.find((gap) =>
    gap.image === side && byte >= gap.offset && byte < gap.offset + gap.size && gap.reason !== "no channel") ?? null;
}

/** Channels of modules of one type have the same identifiers: the position makes them unique. */
function unique(channel: StationChannel): StationChannel {
  return { ...channel, id: channelKey(channel) };
}

/** Returns what tells a channel from all others of the station. */
export function channelKey(channel: Pick<StationChannel, "module" | "id">): string {
  return `${channel.module} ${channel.id}`;
}

/** Returns the bytes of one image in bands. */
export function bandsOf(plan: StationPlan, channels: readonly StationChannel[], side: Side): Band[] {
  const { offset, size } = side === "in" ? plan.input : plan.output;
  const own = channels.filter((one) => (one.direction === "in") === (side === "in")).map(unique);
  const rows = imageRows({ first_byte: offset, size, free: [], overlapping: [] }, own);
  const bands: (Band & { rows: ImageRow[] })[] = [];
  for (const row of rows) {
    const module = moduleAt(plan, side, row.byte);
    const gap = module === null ? gapAt(plan, side, row.byte) : null;
    const last = bands.at(-1);
    if (last !== undefined && last.module === module && last.gap === gap) last.rows.push(row);
    else bands.push({ first: row.byte, module, gap, rows: [row] });
  }
  return bands;
}

