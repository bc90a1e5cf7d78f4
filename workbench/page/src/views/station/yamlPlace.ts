import { Store } from "../../state/store";

/** A place in the text of the station that is to be shown. */
export interface YamlTarget {
  line: number;
  column: number | null;
  /** Whether the focus goes there too. */
  isFocused: boolean;
}

export const goTo = new Store<YamlTarget | null>(null);
