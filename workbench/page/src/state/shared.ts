import { useRef } from "preact/hooks";

function isObject(value: unknown): value is Record<string, unknown> {
  return typeof value === "object" && value !== null;
}

function sharedArray(before: readonly unknown[], after: readonly unknown[]): readonly unknown[] {
  const result = after.map((value, index) => shared(before[index], value));
  const isSame = before.length === result.length && result.every((value, index) => value === before[index]);
  return isSame ? before : result;
}

function sharedRecord(before: Record<string, unknown>, after: Record<string, unknown>): Record<string, unknown> {
  const names = Object.keys(after);
  const result: Record<string, unknown> = {};
  for (const name of names) result[name] = shared(before[name], after[name]);
  const isSame = names.length === Object.keys(before).length && names.every((name) => result[name] === before[name]);
  return isSame ? before : result;
}

/**
 * Returns `after` with each part of JSON that equals that of `before` as the same object, so that
 * components of unchanged parts do not render again.
 */
export function shared<T>(before: unknown, after: T): T {
  if (Array.isArray(before) && Array.isArray(after)) return sharedArray(before, after) as unknown as T;
  if (Array.isArray(before) || Array.isArray(after)) return after;
  if (isObject(before) && isObject(after)) return sharedRecord(before, after) as T;
  return after;
}

/** Returns `value`, sharing what equals the value of the last rendering. */
export function useShared<T>(value: T): T {
  const last = useRef<T>(value);
  if (last.current !== value) last.current = shared(last.current, value);
  return last.current;
}
