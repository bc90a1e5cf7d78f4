import { Store } from "../state/store";

const nothing: ReadonlySet<string> = new Set();

/** A thing that is to be brought into view, with the focus or without. */
export interface Shown {
  id: string;
  hasFocus: boolean;
}

/**
 * What is lit in fields and bytes alike, by identifier: what the pointer or the focus came to last.
 */
export class Light {
  readonly lit = new Store<ReadonlySet<string>>(nothing);
  readonly shown = new Store<Shown | null>(null);
  private touched: ReadonlySet<string> | null = null;
  private focused: ReadonlySet<string> | null = null;

  /** null: the pointer is on nothing. */
  touch(ids: readonly string[] | null): void {
    this.touched = ids === null ? null : new Set(ids);
    this.update();
  }

  /** null: the focus is on nothing. */
  focus(ids: readonly string[] | null): void {
    this.focused = ids === null ? null : new Set(ids);
    this.touched = null;
    this.update();
  }

  /** Asks for the thing to be brought into view. */
  show(id: string, hasFocus: boolean): void {
    this.shown.set({ id, hasFocus });
  }

  private update(): void {
    this.lit.set(this.touched ?? this.focused ?? nothing);
  }
}
