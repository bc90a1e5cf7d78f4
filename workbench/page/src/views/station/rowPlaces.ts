// The row as it is drawn: entries, and between them the bytes of the images that no entry has.

import type { Entry, Extent, Gap, StationAnswer, StationModule, StationPlan } from "../../api/stationTypes";

type Side = "in" | "out";

/** Bytes of one image that belong to no module. */
export interface GapPart {
  side: Side;
  reason: Gap["reason"];
  offset: number;
  size: number;
}

/** An entry with its place in both images; null: it has none there, or it is not known. */
export interface Place {
  entry: Entry;
  module: StationModule | null;
  in: Extent | null;
  out: Extent | null;
  /** Bytes between this entry and those before it. */
  before: readonly GapPart[];
  /** Bits within the module that no channel has. */
  bitsWithoutChannel: number;
}

export interface Row {
  places: readonly Place[];
  /** Bytes after all entries. */
  after: readonly GapPart[];
}

function isOfNoEntry(gap: Gap): boolean {
  return gap.module === null && (gap.reason === "padding" || gap.reason === "status");
}

/** Returns the entry before which a gap is drawn: the next one of its image; undefined: none follows. */
function follower(places: readonly Place[], gap: Gap): Place | undefined {
  let next: Place | undefined;
  for (const place of places) {
    const extent = place[gap.image];
    if (extent === null || extent.offset < gap.offset + gap.size) continue;
    if (next === undefined || extent.offset < (next[gap.image]?.offset ?? 0)) next = place;
  }
  return next;
}

function placeOf(entry: Entry): Place {
  return { entry, module: null, in: entry.planned.in, out: entry.planned.out, before: [], bitsWithoutChannel: 0 };
}

function bitsWithoutChannel(plan: StationPlan, position: number): number {
  const own = plan.gaps.filter((gap) => gap.module === position && gap.reason === "no channel");
  return own.reduce((sum, gap) => sum + gap.bits, 0);
}

function plannedPlace(entry: Entry, plan: StationPlan): Place {
  const module = plan.modules[(entry.position ?? 0) - 1] ?? null;
  const own = module === null ? 0 : bitsWithoutChannel(plan, module.position);
  return { ...placeOf(entry), module, bitsWithoutChannel: own };
}

/** Returns the row of an answer; without addresses if its text has errors. */
export function rowOf(answer: StationAnswer): Row {
  const { plan, entries } = answer;
  if (plan === null) return { places: entries.map(placeOf), after: [] };
  const places = entries.map((entry) => plannedPlace(entry, plan));
  const after: GapPart[] = [];
  const before = new Map<Place, GapPart[]>(places.map((place) => [place, []]));
  for (const gap of plan.gaps.filter(isOfNoEntry)) {
    const next = follower(places, gap);
    const list = next === undefined ? after : before.get(next) ?? after;
    list.push({ side: gap.image, reason: gap.reason, offset: gap.offset, size: gap.size });
  }
  return { places: places.map((place) => ({ ...place, before: before.get(place) ?? [] })), after };
}
