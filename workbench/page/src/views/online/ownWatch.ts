// Which watch this page began: it is kept for this tab, so that a reload of the page still knows it.

import { token } from "../../api/session";
import { Store } from "../../state/store";

const key = "mxtool-workbench-watch";

// The numbers begin again in each run of the server.
function kept(id: number): string {
  return `${token() ?? ""} ${id}`;
}

/** What tells the watch of this page from others. */
export const ownWatch = new Store(sessionStorage.getItem(key) ?? "");

export function keepWatch(id: number): void {
  ownWatch.set(kept(id));
  try {
    sessionStorage.setItem(key, ownWatch.get());
  } catch {
    // With a full storage a reload of the page takes the watch for that of another page.
  }
}

/** Returns whether this page began the watch with this number. */
export function isOwnWatch(own: string, id: number): boolean {
  return own === kept(id);
}
