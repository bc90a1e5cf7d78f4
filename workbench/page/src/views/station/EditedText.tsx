import { useEffect, useRef } from "preact/hooks";

export interface EditedTextProps {
  value: string;
  label: string;
  id?: string;
  describedBy?: string | undefined;
  isRefused?: boolean;
  onCommit(text: string): void;
}

/** A text field that gives its text when it is left or at Enter; Escape returns to the value. */
export function EditedText({ value, label, id, describedBy, isRefused = false, onCommit }: EditedTextProps) {
  const field = useRef<HTMLInputElement>(null);
  const given = useRef(value);
  useEffect(() => {
    if (field.current === null || isRefused) return;
    field.current.value = value;
    given.current = value;
  }, [value, isRefused]);
  const commit = (): void => {
    const text = field.current?.value ?? value;
    if (text === given.current) return;
    given.current = text;
    onCommit(text);
  };
  const onKeyDown = (event: KeyboardEvent): void => {
    const input = field.current;
    if (input === null) return;
    if (event.key === "Enter") commit();
    else if (event.key === "Escape" && input.value !== value) input.value = given.current = value;
    else return;
    event.preventDefault();
  };
  return (
    <input
      ref={field}
      id={id}
      type="text"
      autoComplete="off"
      spellcheck={false}
      aria-label={id === undefined ? label : undefined}
      aria-invalid={isRefused}
      aria-describedby={describedBy}
      onKeyDown={onKeyDown}
      onChange={commit}
    />
  );
}
