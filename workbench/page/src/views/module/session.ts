import { configuration, module as openModule } from "../../api/calls";
import { Refusal } from "../../api/client";
import type { Configured, Finding, Module, NamedValue } from "../../api/types";
import type { Refused } from "../../parameters/Field";
import { shared } from "../../state/shared";
import { Store } from "../../state/store";

/** The values that differ from the defaults, as texts by parameter. */
type Values = ReadonlyMap<string, string>;

export interface Editing {
  module: Module;
  configured: Configured;
  values: Values;
  refused: ReadonlyMap<string, Refused>;
  past: readonly Values[];
  future: readonly Values[];
  /** Warnings and notes of the last accepted values. */
  notes: readonly Finding[];
}

const mostSteps = 500;
const noneRefused: ReadonlyMap<string, Refused> = new Map();

function named(values: Values): NamedValue[] {
  return [...values].map(([id, value]) => ({ name: `#${id}`, value }));
}

function withValue(values: Values, id: string, text: string | null): Values {
  const after = new Map(values);
  if (text === null) after.delete(id);
  else after.set(id, text);
  return after;
}

/** Leaves out what is the default after all. */
function onlyChanged(values: Values, configured: Configured): Values {
  const changed = new Set(configured.raw.parameters.filter((one) => one.changed).map((one) => one.id));
  return new Map([...values].filter(([id]) => changed.has(id)));
}

function isSame(a: Values, b: Values): boolean {
  return a.size === b.size && [...a].every(([id, text]) => b.get(id) === text);
}

function reasonOf(error: unknown): Finding[] {
  if (error instanceof Refusal) return error.findings;
  const text = error instanceof Error ? error.message : String(error);
  return [{ severity: "error", place: "", line: null, column: null, text, hint: "", accepted: [], excerpt: "" }];
}

/**
 * A module whose values are edited, with the way back. Values are only those that the server
 * accepted; a refused text is kept beside them. Changes are done one after the other.
 */
export class ModuleSession {
  readonly state: Store<Editing>;
  private last: Promise<unknown> = Promise.resolve();

  constructor(readonly reference: string, module: Module) {
    const none: Values = new Map();
    this.state = new Store<Editing>({
      module, configured: module.configured, values: none, refused: noneRefused, past: [], future: [], notes: [],
    });
  }

  /** The values for a call of the server. */
  values(): NamedValue[] {
    return named(this.state.get().values);
  }

  set(id: string, text: string | null): Promise<void> {
    return this.next(async () => {
      const { values } = this.state.get();
      const answer = await this.ask(withValue(values, id, text));
      if (answer.configured === null && text === null) this.change({ notes: answer.findings });
      else if (answer.configured === null) this.refuse(id, text, answer.findings);
      else this.accept(onlyChanged(withValue(values, id, text), answer.configured), answer.configured, answer.findings, id);
    });
  }

  /** Takes back the last change; refused texts first. */
  undo(): Promise<boolean> {
    return this.next(async () => {
      const { refused, past, future, values } = this.state.get();
      if (refused.size > 0) {
        this.change({ refused: noneRefused });
        return true;
      }
      const before = past.at(-1);
      return before !== undefined && this.goTo(before, { past: past.slice(0, -1), future: [...future, values] });
    });
  }

  redo(): Promise<boolean> {
    return this.next(async () => {
      const { past, future, values } = this.state.get();
      const after = future.at(-1);
      return after !== undefined && this.goTo(after, { past: [...past, values], future: future.slice(0, -1) });
    });
  }

  resetAll(): Promise<boolean> {
    return this.next(async () => {
      const { past, values } = this.state.get();
      if (values.size === 0) {
        this.change({ refused: noneRefused });
        return true;
      }
      return this.goTo(new Map(), { past: [...past, values], future: [] });
    });
  }

  private next<T>(work: () => Promise<T>): Promise<T> {
    const done = this.last.then(work);
    this.last = done.catch(() => undefined);
    return done;
  }

  private async ask(values: Values): Promise<{ configured: Configured | null; findings: readonly Finding[] }> {
    try {
      return await configuration(this.reference, named(values));
    } catch (error) {
      return { configured: null, findings: reasonOf(error) };
    }
  }

  private change(part: Partial<Editing>): void {
    this.state.set({ ...this.state.get(), ...part });
  }

  private refuse(id: string, text: string | null, findings: readonly Finding[]): void {
    this.change({ refused: new Map(this.state.get().refused).set(id, { text: text ?? "", findings }) });
  }

  private accept(values: Values, configured: Configured, notes: readonly Finding[], id: string): void {
    const before = this.state.get();
    const refused = new Map(before.refused);
    refused.delete(id);
    const steps = isSame(before.values, values)
      ? {}
      : { past: [...before.past, before.values].slice(-mostSteps), future: [] };
    this.change({ ...steps, values, refused, notes, configured: shared(before.configured, configured) });
  }

  private async goTo(values: Values, steps: Pick<Editing, "past" | "future">): Promise<boolean> {
    const { configured, findings } = await this.ask(values);
    if (configured === null) return false;
    const before = this.state.get().configured;
    this.change({ ...steps, values, refused: noneRefused, notes: findings, configured: shared(before, configured) });
    return true;
  }
}

const sessions = new Map<string, ModuleSession>();

/** Returns the session of a module; the same one as long as the page is open. */
export async function sessionOf(reference: string, signal: AbortSignal): Promise<ModuleSession> {
  const kept = sessions.get(reference);
  if (kept !== undefined) return kept;
  const session = new ModuleSession(reference, await openModule(reference, signal));
  sessions.set(reference, session);
  return session;
}
