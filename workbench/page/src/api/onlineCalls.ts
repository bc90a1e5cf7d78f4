// One function for each call of the coupler. Work goes on after its answer.

import { callFile, callJson } from "./client";
import type { Download } from "./client";
import type { OnlineAnswer } from "./onlineTypes";

interface Begun {
  sequence: number;
}

/** Returns what is new since the answer of that sequence; 0: everything. */
export function onlineState(after: number): Promise<OnlineAnswer> {
  return callJson(`online?after=${after}`);
}

export function planOnline(text: string): Promise<Begun> {
  return callJson("online/plan", { body: { text } });
}

export function verifyOnline(text: string): Promise<Begun> {
  return callJson("online/verify", { body: { text } });
}

/** Writes the plan of that number, to which a person agreed. */
export function applyOnline(id: number): Promise<Begun> {
  return callJson("online/apply", { body: { id } });
}

export function watchOnline(text: string, channels: readonly string[]): Promise<Begun & { id: number }> {
  return callJson("online/watch", { body: { text, channels } });
}

export function endWatch(): Promise<Begun> {
  return callJson("online/watch", { method: "DELETE" });
}

export function reportFile(format: "json" | "html" | "text"): Promise<Download> {
  return callFile(`online/report?format=${format}`, {});
}
