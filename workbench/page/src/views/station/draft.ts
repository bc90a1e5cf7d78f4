// The draft of this page: the text of a station, and what the server says about it.

import type { StationAnswer } from "../../api/stationTypes";
import type { Finding, ModuleDescription } from "../../api/types";
import { Store } from "../../state/store";

/** A file as it was read or saved last. */
export interface Base {
  text: string;
  version: string;
}

/** Why an edit was not made, and which part of the page asked for it. */
export interface Refused {
  source: string;
  /** What was typed there. */
  text: string;
  findings: readonly Finding[];
}

export interface Draft {
  text: string;
  /** What the server said last; of an older text while an answer is waited for. */
  answer: StationAnswer | null;
  /** The last answer without errors, for what a text with errors does not say. */
  planned: StationAnswer | null;
  /** Descriptions of the modules by their references. */
  descriptions: Readonly<Record<string, ModuleDescription>>;
  selected: number | null;
  refused: Refused | null;
  undo: readonly string[];
  redo: readonly string[];
}

const empty: Draft = {
  text: "",
  answer: null,
  planned: null,
  descriptions: {},
  selected: null,
  refused: null,
  undo: [],
  redo: [],
};

export const draft = new Store<Draft>(empty);

/** The file that the draft began from; null: none is open. */
export const base = new Store<Base | null>(null);

export function change(part: Partial<Draft>): void {
  draft.set({ ...draft.get(), ...part });
}

export function isChanged(): boolean {
  const from = base.get();
  return from !== null && from.text !== draft.get().text;
}
