// Changes of the row: each selects the entry that it is about.

import type { Edit } from "../../api/stationTypes";
import { texts } from "../../texts";
import { draft } from "./draft";
import { entryName } from "./naming";
import { makeChange, makeNextChange } from "./planning";
import type { ChangeOptions } from "./planning";

const source = "row";

function count(): number {
  return draft.get().answer?.entries.length ?? 0;
}

function nameOf(entry: number): string {
  const found = draft.get().answer?.entries[entry];
  return found === undefined ? "" : entryName(found);
}

function move(entry: number, before: number): readonly [Edit, ChangeOptions] {
  const to = before > entry ? before - 1 : before;
  const said = texts.station.moved(nameOf(entry), to + 1, count());
  return [{ kind: "move", entry, before }, { source, select: to, said }];
}

/** Moves an entry in front of the one that is `before` now; their number: to the end. */
export function moveEntry(entry: number, before: number): Promise<boolean> {
  if (before === entry || before === entry + 1) return Promise.resolve(false);
  return makeChange(...move(entry, before));
}

/**
 * Moves the selected entry one place towards the beginning (-1) or the end (1) of the row. It is the one that is
 * selected after the moves before: keys come faster than answers.
 */
export function stepSelected(step: -1 | 1): Promise<boolean> {
  return makeNextChange(() => {
    const entry = draft.get().selected;
    const to = (entry ?? 0) + step;
    if (entry === null || to < 0 || to >= count()) return null;
    return move(entry, step < 0 ? to : to + 1);
  });
}

/** Removes the entry that is selected after the changes before. */
export function removeSelected(): Promise<boolean> {
  return makeNextChange(() => {
    const entry = draft.get().selected;
    if (entry === null) return null;
    return [{ kind: "remove", entry }, { source, select: entry, said: texts.station.removed(nameOf(entry)) }];
  });
}

/** What was added, with its name, and where. */
function addedAt(entry: number, label: string): string {
  return texts.station.added(label, nameOf(entry), entry + 1, count());
}

export function addModule(reference: string, name: string, before: number, label: string): Promise<boolean> {
  const edit = { kind: "add", before, reference, ...(name === "" ? {} : { name }) } as const;
  return makeChange(edit, { source: "add", select: before, shown: () => addedAt(before, label) });
}

export function addReserve(input: number, output: number, name: string, before: number): Promise<boolean> {
  const edit = { kind: "reserve", before, in: input, out: output, ...(name === "" ? {} : { name }) } as const;
  return makeChange(edit, { source: "reserve", select: before, shown: () => addedAt(before, texts.station.reserved) });
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

/** States bytes of a reserved place; those that are left out stay as they are after the last change. */
export function sizeEntry(entry: number, bytes: { in: number } | { out: number }): Promise<boolean> {
  return makeNextChange(() => {
    const known = draft.get().answer?.entries[entry]?.reserve;
    const both = { in: known?.in ?? 0, out: known?.out ?? 0, ...bytes };
    return [{ kind: "size", entry, ...both }, { source: "size", said: texts.station.sized }];
  });
}
