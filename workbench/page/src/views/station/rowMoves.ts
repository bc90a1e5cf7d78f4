// Changes of the row: each selects the entry that it is about.

import { texts } from "../../texts";
import { draft } from "./draft";
import { entryName } from "./naming";
import { makeChange } from "./planning";

const source = "row";

function count(): number {
  return draft.get().answer?.entries.length ?? 0;
}

function nameOf(entry: number): string {
  const found = draft.get().answer?.entries[entry];
  return found === undefined ? "" : entryName(found);
}

/** Moves an entry in front of the one that is `before` now; their number: to the end. */
export function moveEntry(entry: number, before: number): Promise<boolean> {
  if (before === entry || before === entry + 1) return Promise.resolve(false);
  const to = before > entry ? before - 1 : before;
  return makeChange({ kind: "move", entry, before }, {
    source,
    select: to,
    said: texts.station.moved(nameOf(entry), to + 1, count()),
  });
}

/** Moves an entry one place towards the beginning (-1) or the end (1) of the row. */
export function stepEntry(entry: number, step: -1 | 1): Promise<boolean> {
  const to = entry + step;
  if (to < 0 || to >= count()) return Promise.resolve(false);
  return moveEntry(entry, step < 0 ? to : to + 1);
}

export function removeEntry(entry: number): Promise<boolean> {
  return makeChange({ kind: "remove", entry }, { source, select: entry, said: texts.station.removed(nameOf(entry)) });
}

export function addModule(reference: string, name: string, before: number, label: string): Promise<boolean> {
  const edit = { kind: "add", before, reference, ...(name === "" ? {} : { name }) } as const;
  return makeChange(edit, { source: "add", select: before, said: texts.station.added(label) });
}

export function addReserve(input: number, output: number, name: string, before: number): Promise<boolean> {
  const edit = { kind: "reserve", before, in: input, out: output, ...(name === "" ? {} : { name }) } as const;
  return makeChange(edit, { source: "reserve", select: before, said: texts.station.added(texts.station.reserved) });
}

export function pinEntry(entry: number, input: number | null, output: number | null): Promise<boolean> {
  const said = input === null && output === null ? texts.station.unpinned : texts.station.pinned;
  return makeChange({ kind: "pin", entry, in: input, out: output }, { source: "pin", said: said(nameOf(entry)) });
}

export function pinAll(): Promise<boolean> {
  return makeChange({ kind: "pinAll" }, { source, said: texts.station.pinnedAll });
}

export function nameEntry(entry: number, name: string): Promise<boolean> {
  return makeChange({ kind: "name", entry, name }, { source: "name", text: name, said: texts.station.named(name) });
}

/** States the bytes of a reserved place. */
export function sizeEntry(entry: number, input: number, output: number): Promise<boolean> {
  return makeChange({ kind: "size", entry, in: input, out: output }, { source: "size", said: texts.station.sized });
}
