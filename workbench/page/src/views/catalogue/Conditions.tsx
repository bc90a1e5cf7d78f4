import { useId, useState } from "preact/hooks";
import type { Condition } from "../../api/types";
import { useStore } from "../../state/store";
import { texts } from "../../texts";
import { query } from "./search";

function remove(condition: string): void {
  const before = query.get();
  query.set({ ...before, conditions: before.conditions.filter((one) => one !== condition) });
}

function add(condition: string): void {
  const before = query.get();
  if (!before.conditions.includes(condition)) {
    query.set({ ...before, conditions: [...before.conditions, condition] });
  }
}

function Chosen() {
  const { conditions } = useStore(query);
  if (conditions.length === 0) return null;
  return (
    <ul class="chips">
      {conditions.map((condition) => (
        <li key={condition}>
          <span class="mono">{condition}</span>
          <button
            type="button"
            class="quiet"
            aria-label={texts.catalogue.removeCondition(condition)}
            onClick={() => remove(condition)}
          >✕</button>
        </li>
      ))}
    </ul>
  );
}

function Property({ all, chosen, onChoose }: { all: readonly Condition[]; chosen: Condition; onChoose(one: Condition): void }) {
  const id = useId();
  return (
    <div class="labelled">
      <label for={id}>{texts.catalogue.field}</label>
      <select
        id={id}
        value={chosen.name}
        onChange={(event) => onChoose(all.find((one) => one.name === event.currentTarget.value) ?? chosen)}
      >
        {all.map((one) => <option key={one.name} value={one.name}>{one.meaning}</option>)}
      </select>
    </div>
  );
}

function Comparison({ all, chosen, onChoose }: { all: readonly string[]; chosen: string; onChoose(one: string): void }) {
  const id = useId();
  return (
    <div class="labelled">
      <label for={id}>{texts.catalogue.comparison}</label>
      <select id={id} class="mono" value={chosen} onChange={(event) => onChoose(event.currentTarget.value)}>
        {all.map((one) => <option key={one} value={one}>{one}</option>)}
      </select>
    </div>
  );
}

/** The conditions of the search, and a form that adds one. */
export function Conditions({ all }: { all: readonly Condition[] }) {
  const [property, setProperty] = useState(all[0]);
  const [comparison, setComparison] = useState("");
  const [value, setValue] = useState("");
  const id = useId();
  if (property === undefined) return null;
  const { comparisons } = property;
  const compared = comparisons.includes(comparison) ? comparison : comparisons[0] ?? "";
  const submit = (event: Event): void => {
    event.preventDefault();
    if (value.trim() === "") return;
    add(`${property.name}${compared}${value.trim()}`);
    setValue("");
  };
  return (
    <form class="conditions" onSubmit={submit}>
      <Property all={all} chosen={property} onChoose={setProperty} />
      <Comparison all={comparisons} chosen={compared} onChoose={setComparison} />
      <div class="labelled">
        <label for={id}>{texts.catalogue.value}</label>
        <input
          id={id}
          type="text"
          autoComplete="off"
          inputMode={property.isNumber ? "numeric" : "text"}
          value={value}
          onInput={(event) => setValue(event.currentTarget.value)}
        />
      </div>
      <button type="submit">{texts.catalogue.addCondition}</button>
      <Chosen />
    </form>
  );
}
