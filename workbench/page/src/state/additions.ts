import { Store } from "./store";

/** A module that is to be added to the station. */
export interface Addition {
  reference: string;
  label: string;
}

/** What other views ask the view of the station to add; it takes them from here. */
export const additions = new Store<readonly Addition[]>([]);

export function requestModule(addition: Addition): void {
  additions.set([...additions.get(), addition]);
}
