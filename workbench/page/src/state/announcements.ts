import { Store } from "./store";

/** A short message: shown for some seconds and read by screen readers. */
export interface Announcement {
  id: number;
  text: string;
  isUrgent: boolean;
}

const shownMs = 6_000;
const mostAtOnce = 4;

export const announcements = new Store<readonly Announcement[]>([]);
let lastId = 0;

export function dismiss(id: number): void {
  announcements.set(announcements.get().filter((one) => one.id !== id));
}

/** Shows a message and has it read; an urgent one interrupts what a screen reader says. */
export function announce(text: string, isUrgent = false): void {
  const id = ++lastId;
  announcements.set([...announcements.get(), { id, text, isUrgent }].slice(-mostAtOnce));
  setTimeout(() => dismiss(id), shownMs);
}
