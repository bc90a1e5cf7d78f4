// The draft is kept for this tab, so that a reload of the page loses nothing.

import { base, draft } from "./draft";
import type { Base } from "./draft";

const key = "mxtool-workbench-draft";
const delayMs = 100;

export interface Kept {
  file: string | null;
  text: string;
  base: Base | null;
}

function isKept(value: unknown): value is Kept {
  return typeof value === "object" && value !== null && typeof (value as Kept).text === "string";
}

/** Returns the draft of this tab if it is one of that file, otherwise null. */
export function keptDraft(file: string | null): Kept | null {
  try {
    const value: unknown = JSON.parse(sessionStorage.getItem(key) ?? "null");
    return isKept(value) && value.file === file ? value : null;
  } catch {
    return null;
  }
}

/** Keeps the draft at each change. Returns the function that ends it. */
export function keepDraft(file: string | null): () => void {
  let timer = 0;
  const keepNow = (): void => {
    clearTimeout(timer);
    timer = 0;
    const kept: Kept = { file, text: draft.get().text, base: base.get() };
    try {
      sessionStorage.setItem(key, JSON.stringify(kept));
    } catch {
      // A full storage takes no draft; the page warns before it is left all the same.
    }
  };
  const soon = (): void => {
    if (timer === 0) timer = setTimeout(keepNow, delayMs);
  };
  const ends = [draft.watch(soon), base.watch(soon)];
  addEventListener("pagehide", keepNow);
  return () => {
    for (const end of ends) end();
    removeEventListener("pagehide", keepNow);
    clearTimeout(timer);
  };
}
