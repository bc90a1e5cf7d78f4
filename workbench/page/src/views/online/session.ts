// The state of the coupler, asked for again and again while the page is open.

import { connection, Refusal } from "../../api/client";
import { endWatch, onlineState, planOnline, applyOnline, verifyOnline, watchOnline } from "../../api/onlineCalls";
import type { OnlineState } from "../../api/onlineTypes";
import type { Finding } from "../../api/types";
import { announce } from "../../state/announcements";
import { shared } from "../../state/shared";
import { targetState } from "../../state/status";
import type { TargetState } from "../../state/status";
import { Store } from "../../state/store";
import { texts } from "../../texts";
import { draft } from "../station/draft";
import { inTurn } from "../station/planning";
import { keepWatch } from "./ownWatch";

const busyPeriodMs = 500;
const idlePeriodMs = 2_000;

/** What the server said last of the coupler; null: nothing yet. */
export const online = new Store<OnlineState | null>(null);

/** When the newest sample of live values came, in ms of `performance.now()`. */
export const sampledAt = new Store(0);

/** Why the last request of a person was not begun. */
export const refusedRequest = new Store<readonly Finding[]>([]);

const badges: Record<OnlineState["connection"], TargetState> = { none: "idle", connected: "connected", failed: "failed" };

function showTarget(): void {
  const state = online.get();
  if (connection.get() !== "connected") targetState.set("unknown");
  else if (state === null) targetState.set("idle");
  else targetState.set(state.work === null ? badges[state.connection] : "working");
}

let timer = 0;
let isAsking = false;

function again(): void {
  clearTimeout(timer);
  const state = online.get();
  const isBusy = state !== null && (state.live !== null || state.work !== null);
  timer = setTimeout(ask, isBusy ? busyPeriodMs : idlePeriodMs);
}

function take(next: OnlineState): void {
  const before = online.get();
  if (next.live !== null && next.live.time !== before?.live?.time) sampledAt.set(performance.now());
  online.set(shared(before, next));
}

async function askNow(): Promise<void> {
  const answer = await onlineState(online.get()?.sequence ?? 0);
  if (answer.isNew) take(answer);
}

function ask(): void {
  if (isAsking) return;
  isAsking = true;
  askNow().catch(() => undefined).finally(() => {
    isAsking = false;
    showTarget();
    again();
  });
}

/** Follows the coupler. Returns the function that ends it. */
export function followTarget(): () => void {
  const ends = [connection.watch(showTarget)];
  ask();
  return () => {
    for (const end of ends) end();
    clearTimeout(timer);
  };
}

async function begin(work: () => Promise<unknown>): Promise<boolean> {
  refusedRequest.set([]);
  try {
    await work();
    ask();
    return true;
  } catch (error) {
    if (error instanceof Refusal) refusedRequest.set(error.findings);
    announce(texts.online.notBegun(error instanceof Error ? error.message : ""), true);
    return false;
  }
}

/** Compares the coupler with the draft, to be written. */
export function plan(): Promise<boolean> {
  return begin(() => inTurn(() => planOnline(draft.get().text)));
}

/** Compares the coupler with the draft. */
export function verify(): Promise<boolean> {
  return begin(() => inTurn(() => verifyOnline(draft.get().text)));
}

/** Writes the plan of that number, to which a person agreed. */
export function apply(id: number): Promise<boolean> {
  return begin(() => applyOnline(id));
}

/** Reads the channels that the names select; none: all. */
export function watch(names: readonly string[]): Promise<boolean> {
  return begin(() => inTurn(async () => keepWatch((await watchOnline(draft.get().text, names)).id)));
}

export function stopWatch(): Promise<boolean> {
  return begin(endWatch);
}
