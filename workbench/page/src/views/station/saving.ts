// Saving to the opened file, and what becomes of a change of it by another program.

import { openedFile, saveFile } from "../../api/calls";
import { Refusal } from "../../api/client";
import type { Finding, OpenedFile } from "../../api/types";
import { announce, say } from "../../state/announcements";
import { diskVersion, saveState } from "../../state/status";
import { Store } from "../../state/store";
import { texts } from "../../texts";
import { base, draft, isChanged } from "./draft";
import type { Base } from "./draft";
import { inTurn, replaceText } from "./planning";

/** The file as another program left it; null: it is as this page knows it. */
export const theirs = new Store<Base | null>(null);

/** Why the file could not be read, or the draft not be saved. */
export const saveFindings = new Store<readonly Finding[]>([]);

let isSaving = false;

/** Says in the header whether the file has the draft. */
export function showSaveState(): void {
  if (base.get() === null) saveState.set("none");
  else if (isSaving) saveState.set("saving");
  else if (theirs.get() !== null) saveState.set("conflict");
  else saveState.set(isChanged() ? "changed" : "saved");
}

function know(file: Base): void {
  base.set(file);
  theirs.set(null);
  diskVersion.set(file.version);
}

function refused(error: unknown): void {
  if (!(error instanceof Refusal)) {
    announce(texts.station.notSaved(error instanceof Error ? error.message : ""), true);
    return;
  }
  const file = error.body as Partial<OpenedFile> | null;
  if (error.status === 409 && file?.text !== undefined && file.version !== undefined) {
    theirs.set({ text: file.text, version: file.version });
  } else {
    saveFindings.set(error.findings);
  }
  announce(texts.station.notSaved(error.message), true);
}

async function saveFrom(version: string): Promise<void> {
  const { text } = draft.get();
  isSaving = true;
  showSaveState();
  try {
    know({ text, version: (await saveFile(text, version)).version });
    saveFindings.set([]);
    say(texts.station.saved);
  } catch (error) {
    refused(error);
  } finally {
    isSaving = false;
    showSaveState();
  }
}

/** Saves the draft, after the changes that are still waited for. */
export function save(): Promise<void> {
  return inTurn(async () => {
    const from = base.get();
    if (from !== null) await saveFrom(from.version);
  });
}

/** Saves the draft over the file as another program left it; only after a person chose that. */
export function keepMine(): Promise<void> {
  return inTurn(async () => {
    const other = theirs.get();
    if (other !== null) await saveFrom(other.version);
  });
}

/** Makes the file as another program left it the draft; undo returns to the own text. */
export function takeTheirs(): void {
  const other = theirs.get();
  if (other === null) return;
  know(other);
  replaceText(other.text);
  showSaveState();
  say(texts.station.tookTheirs);
}

async function lookAtFile(): Promise<void> {
  const { text, version } = await openedFile();
  const known = base.get();
  if (known === null || isSaving) return;
  if (version === known.version) theirs.set(null);
  else if (text === draft.get().text) know({ text, version });
  else if (theirs.get()?.version !== version) theirs.set({ text, version });
  showSaveState();
}

/** Looks at the file if its version is another one than this page knows. */
export function checkFile(): void {
  const version = diskVersion.get();
  const known = theirs.get() ?? base.get();
  if (version === null || known === null || version === known.version || isSaving) return;
  lookAtFile().catch(() => undefined);
}
