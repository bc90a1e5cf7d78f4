// One process image of the station as rows of bits, with the modules that the bytes belong to.

import type { Extent, Gap, StationChannel, StationModule, StationPlan } from "../../api/stationTypes";
import type { ImageRow } from "../module/imageRows";
import { imageRows } from "../module/imageRows";

type Side = "in" | "out";

const bitsOfByte = 8;

/** Consecutive bytes of one module, or of none. */
export interface Band {
  first: number;
  size: number;
  module: StationModule | null;
  /** Why no module has them. */
  gap: Gap | null;
  /** The bytes of a module; none for those of no module. */
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

function holds(channel: StationChannel, first: number, size: number): boolean {
  const last = channel.byte + Math.ceil((channel.bit_offset % bitsOfByte + channel.bit_length) / bitsOfByte);
  return channel.byte < first + size && last > first;
}

/** Returns where modules and gaps of one image begin and end, in order, from its first byte to its end. */
function edgesOf(plan: StationPlan, side: Side, { offset, size }: Extent): number[] {
  const extents = [...plan.modules.map((one) => one[side]), ...plan.gaps.filter((gap) => gap.image === side)];
  const edges = extents.flatMap((one) => [one.offset, one.offset + one.size]);
  const within = edges.filter((edge) => edge > offset && edge < offset + size);
  return [...new Set([offset, ...within, offset + size])].sort((a, b) => a - b);
}

/** Returns the bytes of one image in bands, by address. An image may have 2 GiB: bytes are not counted one by one. */
export function bandsOf(plan: StationPlan, channels: readonly StationChannel[], side: Side): Band[] {
  const own = channels.filter((one) => (one.direction === "in") === (side === "in")).map(unique);
  const edges = edgesOf(plan, side, side === "in" ? plan.input : plan.output);
  const bands: Band[] = [];
  edges.slice(1).forEach((end, index) => {
    const first = edges[index] ?? end;
    const module = moduleAt(plan, side, first);
    const gap = module === null ? gapAt(plan, side, first) : null;
    const last = bands.at(-1);
    if (last !== undefined && last.module === module && last.gap === gap) last.size += end - first;
    else bands.push({ first, size: end - first, module, gap, rows: [] });
  });
  for (const band of bands) {
    const area = { first_byte: band.first, size: band.size, free: [], overlapping: [] };
    if (band.module !== null) band.rows = imageRows(area, own.filter((one) => holds(one, band.first, band.size)));
  }
  return bands;
}
