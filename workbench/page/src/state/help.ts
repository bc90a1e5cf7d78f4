import { Store } from "./store";

export const isHelpOpen = new Store(false);

export function openHelp(): void {
  isHelpOpen.set(true);
}
