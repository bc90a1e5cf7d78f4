import { useState } from "preact/hooks";
import { texts } from "../texts";
import type { Choice } from "./options";

/** What every control of a value gets. `value` is the word or the number that it shows. */
export interface ControlProps {
  id: string;
  name: string;
  value: string;
  isRefused: boolean;
  describedBy: string;
  onCommit(text: string): void;
}

interface ChoiceProps extends ControlProps {
  choices: readonly Choice[];
  /** What is shown if the value is none of the choices. */
  shown: string;
}

/** Two states: off and on. */
export function Switch({ id, value, choices, isRefused, describedBy, onCommit, shown }: ChoiceProps) {
  const chosen = choices.find((one) => one.word === value);
  const isOn = chosen !== undefined && chosen === choices[1];
  const other = isOn ? choices[0] : choices[1];
  return (
    <span class="switch">
      <input
        id={id}
        type="checkbox"
        role="switch"
        checked={isOn}
        aria-invalid={isRefused}
        aria-describedby={describedBy}
        onChange={(event) => {
          event.currentTarget.checked = isOn;
          if (other !== undefined) onCommit(other.word);
        }}
      />
      <span aria-hidden="true">{chosen?.text ?? shown}</span>
    </span>
  );
}

/** Two to four short options side by side. */
export function Segments({ id, name, value, choices, isRefused, describedBy, onCommit }: ChoiceProps) {
  return (
    <span class="segments" role="radiogroup" aria-label={name} aria-invalid={isRefused} aria-describedby={describedBy}>
      {choices.map((one) => (
        <label key={one.word}>
          <input
            type="radio"
            name={id}
            value={one.word}
            checked={one.word === value}
            onChange={() => onCommit(one.word)}
          />
          <span>{one.text}</span>
        </label>
      ))}
    </span>
  );
}

/** One of many options. */
export function Choices({ id, value, choices, shown, isRefused, describedBy, onCommit }: ChoiceProps) {
  const isOption = choices.some((one) => one.word === value);
  return (
    <select
      id={id}
      value={value}
      aria-invalid={isRefused}
      aria-describedby={describedBy}
      onChange={(event) => onCommit(event.currentTarget.value)}
    >
      {!isOption && <option value={value}>{texts.parameters.notAnOption(shown)}</option>}
      {choices.map((one) => <option key={one.word} value={one.word}>{one.text}</option>)}
    </select>
  );
}

interface NumberProps extends ControlProps {
  unit: string;
  /** Returns to the value before. */
  onForget(): void;
}

/** A number as text; it is set by Enter or when the field is left. */
export function NumberField({ id, value, unit, isRefused, describedBy, onCommit, onForget }: NumberProps) {
  const [typed, setTyped] = useState<string | null>(null);
  const commit = (isAgain: boolean): void => {
    setTyped(null);
    if (isAgain || (typed !== null && typed !== value)) onCommit(typed ?? value);
  };
  const onKeyDown = (event: KeyboardEvent): void => {
    if (event.key === "Enter") commit(isRefused);
    else if (event.key === "Escape") {
      setTyped(null);
      if (isRefused) onForget();
    }
  };
  return (
    <span class="quantity">
      <input
        id={id}
        type="text"
        inputMode="decimal"
        autoComplete="off"
        spellcheck={false}
        value={typed ?? value}
        data-typed={typed !== null && typed !== value ? "" : undefined}
        aria-invalid={isRefused}
        aria-describedby={describedBy}
        onInput={(event) => setTyped(event.currentTarget.value)}
        onBlur={() => commit(false)}
        onKeyDown={onKeyDown}
      />
      {unit !== "" && <span class="unit">{unit}</span>}
    </span>
  );
}
