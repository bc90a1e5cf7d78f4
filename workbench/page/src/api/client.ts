import { Store } from "../state/store";
import { texts } from "../texts";
import { token } from "./session";
import type { Finding } from "./types";

const firstPath = "/api/v1/";
const patienceMs = 30_000;
const retryMs = 1_000;
const busyRetries = 5;

/** What is known of the server. */
export type Connection = "connected" | "lost" | "earlier-run";

export const connection = new Store<Connection>("connected");

/** A call that the server answered with findings. `body` is the whole answer. */
export class Refusal extends Error {
  constructor(
    readonly status: number,
    readonly findings: Finding[],
    readonly body: unknown,
  ) {
    super(findings[0]?.text ?? texts.connection.failed(status));
  }
}

/** The server did not answer, or does not accept this page; `connection` says which. */
export class Unreachable extends Error {}

export interface Call {
  method?: "GET" | "POST" | "PUT" | "DELETE";
  body?: unknown;
  /** Ends the call; it then fails with an AbortError. */
  signal?: AbortSignal | undefined;
}

function request(call: Call, signal: AbortSignal): RequestInit {
  const headers: Record<string, string> = { Authorization: `Bearer ${token() ?? ""}` };
  if (call.body !== undefined) headers["Content-Type"] = "application/json";
  return {
    method: call.method ?? (call.body === undefined ? "GET" : "POST"),
    headers,
    ...(call.body === undefined ? {} : { body: JSON.stringify(call.body) }),
    signal,
    credentials: "omit",
    cache: "no-store",
  };
}

/** Returns whether `error` says that a call was ended by its own page. */
export function isAborted(error: unknown): boolean {
  return error instanceof DOMException && error.name === "AbortError";
}

async function fetchOnce(path: string, call: Call): Promise<Response> {
  const patience = new AbortController();
  const timer = setTimeout(() => patience.abort(), patienceMs);
  const stop = (): void => patience.abort();
  call.signal?.addEventListener("abort", stop);
  try {
    const response = await fetch(firstPath + path, request(call, patience.signal));
    connection.set(response.status === 401 ? "earlier-run" : "connected");
    return response;
  } catch (error) {
    if (call.signal?.aborted) throw new DOMException("", "AbortError");
    connection.set("lost");
    throw new Unreachable(texts.connection.lost, { cause: error });
  } finally {
    clearTimeout(timer);
    call.signal?.removeEventListener("abort", stop);
  }
}

function pause(ms: number): Promise<void> {
  return new Promise((done) => setTimeout(done, ms));
}

async function fetchUnlessBusy(path: string, call: Call): Promise<Response> {
  for (let retry = 0; ; ++retry) {
    const response = await fetchOnce(path, call);
    if (response.status !== 503 || retry === busyRetries) return response;
    const seconds = Number(response.headers.get("Retry-After") ?? "1");
    await pause(Math.min(seconds, 5) * retryMs);
  }
}

async function refusal(response: Response): Promise<Error> {
  if (response.status === 401) return new Unreachable(texts.connection.earlierRun);
  const body: unknown = await response.json().catch(() => null);
  const findings = (body as { findings?: Finding[] } | null)?.findings ?? [];
  return new Refusal(response.status, findings, body);
}

async function answered(path: string, call: Call): Promise<Response> {
  const response = await fetchUnlessBusy(path, call);
  if (!response.ok) throw await refusal(response);
  return response;
}

/** Calls the server and returns the object that it answers. Fails with Refusal or Unreachable. */
export async function callJson<T>(path: string, call: Call = {}): Promise<T> {
  const response = await answered(path, call);
  const answer = (await response.json()) as T;
  // A long answer may be complete after its call was ended: it must not replace a newer one.
  if (call.signal?.aborted) throw new DOMException("", "AbortError");
  return answer;
}

/** A file that the server made. */
export interface Download {
  name: string;
  content: Blob;
}

function fileName(response: Response): string {
  const header = response.headers.get("Content-Disposition") ?? "";
  const encoded = /filename\*=UTF-8''([^;]+)/i.exec(header)?.[1];
  return encoded === undefined ? "export" : decodeURIComponent(encoded);
}

/** Calls the server and returns the file that it answers. */
export async function callFile(path: string, call: Call): Promise<Download> {
  const response = await answered(path, call);
  return { name: fileName(response), content: await response.blob() };
}
