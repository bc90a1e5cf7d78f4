import { useEffect, useReducer, useRef } from "preact/hooks";

/** A value that components watch: each renders again only if what it selects changes. */
export class Store<T> {
  private listeners = new Set<() => void>();

  constructor(private current: T) {}

  get(): T {
    return this.current;
  }

  set(next: T): void {
    if (Object.is(next, this.current)) return;
    this.current = next;
    for (const listener of [...this.listeners]) listener();
  }

  /** Calls `listener` after each change until the returned function is called. */
  watch(listener: () => void): () => void {
    this.listeners.add(listener);
    return () => this.listeners.delete(listener);
  }
}

/** Returns what `select` takes from the store, and renders the component again when it changes. */
export function useStore<T, S = T>(store: Store<T>, select: (value: T) => S = (value) => value as unknown as S): S {
  const [, render] = useReducer((count: number) => count + 1, 0);
  const selected = select(store.get());
  const last = useRef({ select, selected });
  last.current = { select, selected };
  useEffect(() => {
    const check = (): void => {
      const { select: pick, selected: before } = last.current;
      if (!Object.is(pick(store.get()), before)) render(0);
    };
    check();
    return store.watch(check);
  }, [store]);
  return selected;
}
