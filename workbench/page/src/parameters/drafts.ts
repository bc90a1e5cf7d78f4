import { useCallback, useRef, useState } from "preact/hooks";
import type { ParameterEditorProps } from "./ParameterEditor";

export interface Drafts {
  /** What was chosen and is not yet answered, by parameter. */
  drafts: ReadonlyMap<string, string>;
  /** Stays the same function. */
  commit(id: string, text: string | null): void;
  /** The parameter that was set last, until that is said. */
  lastSet: { current: string | null };
}

/** Keeps what is chosen in its field until it is set or refused. */
export function useDrafts(onSet: ParameterEditorProps["onSet"]): Drafts {
  const [drafts, setDrafts] = useState<ReadonlyMap<string, string>>(new Map());
  const latest = useRef(onSet);
  latest.current = onSet;
  const lastSet = useRef<string | null>(null);
  const commit = useCallback((id: string, text: string | null): void => {
    lastSet.current = id;
    if (text !== null) setDrafts((before) => new Map(before).set(id, text));
    const end = (): void => setDrafts((before) => {
      if (text === null || before.get(id) !== text) return before;
      const after = new Map(before);
      after.delete(id);
      return after;
    });
    Promise.resolve(latest.current(id, text)).then(end, end);
  }, []);
  return { drafts, commit, lastSet };
}
