import { useEffect, useState } from "preact/hooks";

const steps: Record<string, (index: number, count: number) => number> = {
  ArrowDown: (index) => index + 1,
  ArrowRight: (index) => index + 1,
  ArrowUp: (index) => index - 1,
  ArrowLeft: (index) => index - 1,
  PageDown: (index) => index + 10,
  PageUp: (index) => index - 10,
  Home: () => 0,
  End: (_, count) => count - 1,
};

/** One item of a list is reached by Tab, the others by arrow keys. */
export interface Roving {
  current: number;
  onKeyDown(event: KeyboardEvent): void;
  onFocusIn(event: FocusEvent): void;
}

function positionOf(target: EventTarget | null): number {
  const item = target instanceof Element ? target.closest<HTMLElement>("[data-item]") : null;
  return item === null ? -1 : Number(item.dataset["item"]);
}

/** Makes a roving list of `count` items: elements with data-item="INDEX"; each focuses its first link or button. */
export function useRoving(count: number): Roving {
  const [current, setCurrent] = useState(0);
  useEffect(() => {
    if (current >= count) setCurrent(Math.max(0, count - 1));
  }, [count, current]);
  const onKeyDown = (event: KeyboardEvent): void => {
    const step = steps[event.key];
    const from = positionOf(event.target);
    if (step === undefined || from < 0 || event.ctrlKey || event.altKey) return;
    const to = Math.min(count - 1, Math.max(0, step(from, count)));
    const root = event.currentTarget as HTMLElement;
    root.querySelector(`[data-item="${to}"]`)?.querySelector<HTMLElement>("a, button")?.focus();
    event.preventDefault();
  };
  const onFocusIn = (event: FocusEvent): void => {
    const position = positionOf(event.target);
    if (position >= 0) setCurrent(position);
  };
  return { current, onKeyDown, onFocusIn };
}
