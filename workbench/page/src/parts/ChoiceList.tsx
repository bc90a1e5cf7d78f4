import { useId } from "preact/hooks";

export interface ListedChoice {
  key: string;
  label: string;
  /** Shown beside the label. */
  detail?: string;
}

/** Choices under a heading, each a button; nothing if there are none. */
export function ChoiceList({ title, all, onChoose }: { title: string; all: readonly ListedChoice[]; onChoose(one: ListedChoice): void }) {
  const id = useId();
  if (all.length === 0) return null;
  return (
    <section aria-labelledby={id}>
      <h3 id={id}>{title}</h3>
      <ul class="candidates">
        {all.map((one) => (
          <li key={one.key}>
            <button type="button" onClick={() => onChoose(one)}>
              <span>{one.label}</span>{" "}
              {one.detail !== undefined && <span class="mono faint">{one.detail}</span>}
            </button>
          </li>
        ))}
      </ul>
    </section>
  );
}
