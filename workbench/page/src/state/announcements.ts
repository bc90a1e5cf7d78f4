import { Store } from "./store";

/** A short message: shown for some seconds and read by screen readers. */
export interface Announcement {
  id: number;
  text: string;
  isUrgent: boolean;
  /** Otherwise it is only heard. */
  isShown: boolean;
  action?: Action | undefined;
}

/** What a person can do about a message. */
export interface Action {
  label: string;
  run(): void;
}

const shownMs = 6_000;
const mostAtOnce = 4;

export const announcements = new Store<readonly Announcement[]>([]);
let lastId = 0;

export function dismiss(id: number): void {
  announcements.set(announcements.get().filter((one) => one.id !== id));
}

/** Removes the message after a time, later while a person is at the messages. */
function dismissSoon(id: number): void {
  setTimeout(() => {
    if (document.querySelector(".toasts:is(:hover, :focus-within)") !== null) dismissSoon(id);
    else dismiss(id);
  }, shownMs);
}

function add(one: Omit<Announcement, "id">): number {
  const id = ++lastId;
  announcements.set([...announcements.get(), { id, ...one }].slice(-mostAtOnce));
  dismissSoon(id);
  return id;
}

/** Shows a message and has it read; an urgent one interrupts what a screen reader says. Returns its number. */
export function announce(text: string, isUrgent = false, action?: Action): number {
  return add({ text, isUrgent, isShown: true, action });
}

/** Has a message read that the page shows elsewhere. */
export function say(text: string, isUrgent = false): void {
  add({ text, isUrgent, isShown: false });
}
