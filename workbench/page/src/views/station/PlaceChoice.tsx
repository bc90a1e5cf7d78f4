import { useId } from "preact/hooks";
import { useStore } from "../../state/store";
import { texts } from "../../texts";
import { draft } from "./draft";
import { entryName } from "./naming";

/** Chooses the entry in front of which another one is put. */
export function PlaceChoice({ value, onChange }: { value: number; onChange(before: number): void }) {
  const entries = useStore(draft, (one) => one.answer?.entries ?? null) ?? [];
  const id = useId();
  const words = texts.station.add;
  return (
    <div class="labelled">
      <label for={id}>{words.place}</label>
      <select id={id} value={String(value)} onChange={(event) => onChange(Number(event.currentTarget.value))}>
        {entries.map((entry) => (
          <option key={entry.index} value={String(entry.index)}>{words.before(entry.index + 1, entryName(entry))}</option>
        ))}
        <option value={String(entries.length)}>{words.atEnd}</option>
      </select>
    </div>
  );
}
