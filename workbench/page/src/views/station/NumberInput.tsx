import { useId } from "preact/hooks";

export interface NumberInputProps {
  label: string;
  value: string;
  placeholder?: string;
  onInput(text: string): void;
}

/** A field for a number of bytes. What is no number is refused by `wholeNumber`. */
export function NumberInput({ label, value, placeholder, onInput }: NumberInputProps) {
  const id = useId();
  return (
    <div class="labelled">
      <label for={id}>{label}</label>
      <input
        id={id}
        type="text"
        inputMode="numeric"
        autoComplete="off"
        value={value}
        placeholder={placeholder}
        onInput={(event) => onInput(event.currentTarget.value)}
      />
    </div>
  );
}

/** Returns the number of a text; empty: `none`; undefined: the text is no number of bytes. */
export function wholeNumber<T>(text: string, none: T): number | T | undefined {
  const typed = text.trim();
  if (typed === "") return none;
  return /^(\d+|0x[0-9a-f]+)$/i.test(typed) ? Number(typed) : undefined;
}
