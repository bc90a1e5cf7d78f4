// Questions to the server about the draft: one after the other, so that no edit is lost.

import { askStation } from "../../api/stationCalls";
import type { Edit, StationAnswer } from "../../api/stationTypes";
import { Refusal } from "../../api/client";
import type { Finding, ModuleDescription } from "../../api/types";
import { announce, dismiss, say } from "../../state/announcements";
import { shared } from "../../state/shared";
import { Store } from "../../state/store";
import { texts } from "../../texts";
import { change, draft } from "./draft";

const mostUndone = 200;
const pauseMs = 250;

/** How many questions are not answered yet. */
const pending = new Store(0);

let last: Promise<unknown> = Promise.resolve();

/** Runs `work` after all that was asked for before. */
export function inTurn<T>(work: () => Promise<T>): Promise<T> {
  pending.set(pending.get() + 1);
  const next = last.then(work).finally(() => pending.set(pending.get() - 1));
  last = next.catch(() => undefined);
  return next;
}

function selectedPosition(): number | undefined {
  const { answer, selected } = draft.get();
  return selected === null ? undefined : answer?.entries[selected]?.position ?? undefined;
}

function isDescribed(position: number): boolean {
  const { planned, descriptions } = draft.get();
  const reference = planned?.plan?.modules[position - 1]?.reference;
  return reference !== undefined && reference in descriptions;
}

function ask(text: string, edit?: Edit): Promise<StationAnswer> {
  const position = selectedPosition();
  return askStation({
    text,
    ...(edit === undefined ? {} : { edit }),
    ...(position === undefined ? {} : { module: position, describe: !isDescribed(position) }),
  });
}

function descriptionsWith(answer: StationAnswer): Readonly<Record<string, ModuleDescription>> {
  const known = draft.get().descriptions;
  const { module, plan } = answer;
  const reference = plan?.modules[(module?.position ?? 0) - 1]?.reference;
  if (module === null || reference === undefined || module.device === undefined) return known;
  const { device, channels, picture, processImage, sizes, places } = module as typeof module & ModuleDescription;
  return { ...known, [reference]: { device, channels, picture, processImage, sizes, places } };
}

function selectionIn(answer: StationAnswer, wanted: number | null): number | null {
  const count = answer.entries.length;
  if (count === 0) return null;
  return wanted === null ? 0 : Math.min(wanted, count - 1);
}

/** Takes an answer over: parts that did not change stay the same objects. */
function take(answer: StationAnswer, selected: number | null): void {
  const before = draft.get();
  const taken = shared(before.answer, answer);
  const isNew = taken.text !== before.text;
  change({
    answer: taken,
    planned: taken.isPlanned ? shared(before.planned, taken) : before.planned,
    descriptions: descriptionsWith(answer),
    selected: selectionIn(taken, selected),
    text: taken.text,
    ...(isNew ? { undo: [...before.undo, before.text].slice(-mostUndone), redo: [] } : {}),
  });
}

/** Returns whether the selected module is the one that the answer has, with its description. */
function isSelectedKnown(): boolean {
  const { answer } = draft.get();
  const position = selectedPosition();
  if (position === undefined || answer === null || !answer.isPlanned) return true;
  return answer.module?.position === position && isDescribed(position);
}

function failed(error: unknown): void {
  if (error instanceof Refusal) change({ refused: { source: "", text: "", findings: error.findings } });
}

async function planOnce(): Promise<void> {
  const sent = draft.get().text;
  const answer = await ask(sent);
  if (draft.get().text === sent) take({ ...answer, text: sent }, draft.get().selected);
}

async function planFully(): Promise<void> {
  try {
    await planOnce();
    if (!isSelectedKnown()) await planOnce();
  } catch (error) {
    failed(error);
  }
}

/** Asks what the text of the draft means. */
export function plan(): Promise<void> {
  return inTurn(planFully);
}

let typing = 0;

/** Takes over a text that a person types; it is planned after a pause. */
export function type(text: string): void {
  const before = draft.get();
  const isFirst = typing === 0;
  change({
    text,
    refused: null,
    ...(isFirst ? { undo: [...before.undo, before.text].slice(-mostUndone), redo: [] } : {}),
  });
  clearTimeout(typing);
  typing = setTimeout(() => {
    typing = 0;
    void plan();
  }, pauseMs);
}

/** Who makes a change, and what follows it. */
export interface ChangeOptions {
  /** The part of the page that asks: it shows why the edit was refused. */
  source: string;
  /** What was typed there. */
  text?: string;
  /** Whether that part has the reason read itself. */
  isShownThere?: boolean;
  /** The entry that is selected after the edit. */
  select?: number;
  /** Said after the edit. */
  said?: string;
  /** Shown after the edit, with the way back. */
  shown?(): string;
}

function refuse(findings: readonly Finding[], { source, text = "", isShownThere = false }: ChangeOptions): void {
  change({ refused: { source, text, findings } });
  if (!isShownThere) say(texts.station.refused(findings.map((one) => one.text).join(" ")), true);
}

// A text that was typed while the server worked is edited again: neither is lost.
async function answerToEdit(edit: Edit): Promise<StationAnswer> {
  for (;;) {
    const sent = draft.get().text;
    const answer = await ask(sent, edit);
    if (draft.get().text === sent) return answer;
  }
}

/** Shows what was made, with the way back as long as it is the last change. */
function showMade(words: string): void {
  const made = draft.get().text;
  const id = announce(words, false, { label: texts.module.undo, run: undo });
  const end = draft.watch(() => {
    if (draft.get().text === made) return;
    dismiss(id);
    end();
  });
}

async function makeEdit(edit: Edit, options: ChangeOptions): Promise<boolean> {
  try {
    const answer = await answerToEdit(edit);
    if (answer.refused.length > 0) {
      refuse(answer.refused, options);
      return false;
    }
    change({ refused: null });
    take(answer, options.select ?? draft.get().selected);
    if (!isSelectedKnown()) await planOnce();
    if (options.said !== undefined) say(options.said);
    if (options.shown !== undefined) showMade(options.shown());
    return true;
  } catch (error) {
    if (error instanceof Refusal) refuse(error.findings, options);
    else announce(texts.station.notMade, true);
    return false;
  }
}

/** Makes a change of the draft; returns whether it was made. A refused one leaves the draft as it is. */
export function makeChange(edit: Edit, options: ChangeOptions): Promise<boolean> {
  return inTurn(() => makeEdit(edit, options));
}

/** Makes the change that `decide` gives after all changes before it are made; null: there is none to make. */
export function makeNextChange(decide: () => readonly [Edit, ChangeOptions] | null): Promise<boolean> {
  return inTurn(async () => {
    const next = decide();
    return next !== null && makeEdit(...next);
  });
}

/** Selects an entry and asks for its module. */
export function select(entry: number): void {
  if (draft.get().selected === entry) return;
  change({ selected: entry, refused: null });
  if (!isSelectedKnown()) void plan();
}

/** Selects the entry of a module. */
export function selectPosition(position: number): void {
  const entry = draft.get().answer?.entries.find((one) => one.position === position);
  if (entry !== undefined) select(entry.index);
}

function step(text: string, undo: readonly string[], redo: readonly string[]): void {
  clearTimeout(typing);
  typing = 0;
  change({ text, undo, redo, refused: null });
  void plan();
}

function undoNow(): void {
  const { text, undo: before, redo } = draft.get();
  const to = before.at(-1);
  if (to === undefined) say(texts.module.nothingToUndo);
  else {
    step(to, before.slice(0, -1), [...redo, text]);
    say(texts.module.undone);
  }
}

function redoNow(): void {
  const { text, undo: before, redo: after } = draft.get();
  const to = after.at(-1);
  if (to === undefined) say(texts.module.nothingToRedo);
  else {
    step(to, [...before, text], after.slice(0, -1));
    say(texts.module.redone);
  }
}

/** Returns to the text before the last change, after the changes that are still waited for. */
export function undo(): void {
  void inTurn(async () => undoNow());
}

/** Makes the change again that was taken back last. */
export function redo(): void {
  void inTurn(async () => redoNow());
}

/** Replaces the whole text, such as by that of the file; undo returns to the one before. */
export function replaceText(text: string): void {
  const before = draft.get();
  if (before.text === text) return;
  step(text, [...before.undo, before.text].slice(-mostUndone), []);
}

/** Begins with a text: nothing can be taken back. */
export function beginWith(text: string): void {
  change({ text, answer: null, planned: null, selected: null, undo: [], redo: [], refused: null });
  void plan();
}

/** Asks again if the draft has no answer, such as after the server was lost. */
export function planIfUnanswered(): void {
  const { text, answer } = draft.get();
  if (typing === 0 && pending.get() === 0 && answer?.text !== text) void plan();
}
