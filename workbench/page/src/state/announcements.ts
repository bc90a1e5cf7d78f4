import { Store } from "./store";

/** A short message: shown for some seconds and read by screen readers. */
export interface Announcement {
  id: number;
  text: string;
  isUrgent: boolean;
  /** Otherwise it is only heard. */
  isShown: boolean;
}

const shownMs = 6_000;
const mostAtOnce = 4;

export const announcements = new Store<readonly Announcement[]>([]);
let lastId = 0;

export function dismiss(id: number): void {
  announcements.set(announcements.get().filter((one) => one.id !== id));
}

function add(text: string, isUrgent: boolean, isShown: boolean): void {
  const id = ++lastId;
  announcements.set([...announcements.get(), { id, text, isUrgent, isShown }].slice(-mostAtOnce));
  setTimeout(() => dismiss(id), shownMs);
}

/** Shows a message and has it read; an urgent one interrupts what a screen reader says. */
export function announce(text: string, isUrgent = false): void {
  add(text, isUrgent, true);
}

/** Has a message read that the page shows elsewhere. */
export function say(text: string, isUrgent = false): void {
  add(text, isUrgent, false);
}
