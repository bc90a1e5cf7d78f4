import { Store } from "./store";

/** Whether the file has what the page shows. "none": nothing is there to save. */
export type SaveState = "none" | "saved" | "changed" | "saving" | "conflict";

/** The connection with the target of the server. "none": no target was given; "unknown": the server is lost. */
export type TargetState = "none" | "unknown" | "idle" | "working" | "connected" | "failed";

// Set by the views of the station and of the target, shown in the header.
export const saveState = new Store<SaveState>("none");
export const targetState = new Store<TargetState>("none");

/** The version of the opened file on disk, as last asked; null: not known. */
export const diskVersion = new Store<string | null>(null);
