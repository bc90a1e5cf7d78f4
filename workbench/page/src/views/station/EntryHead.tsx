import { useId } from "preact/hooks";
import { address } from "../../state/route";
import { useStore } from "../../state/store";
import { texts } from "../../texts";
import { draft } from "./draft";
import { EditedText } from "./EditedText";
import { wholeNumber } from "./NumberInput";
import { RefusedAt } from "./RefusedAt";
import type { Place } from "./rowPlaces";
import { nameEntry, sizeEntry } from "./rowMoves";

const words = texts.station.entry;

function Name({ place }: { place: Place }) {
  const { entry, module } = place;
  const id = useId();
  const isRefused = useStore(draft, (value) => value.refused?.source === "name");
  const own = entry.reference === "" ? entry.reserve?.name ?? "" : entry.name;
  return (
    <div class="labelled">
      <label for={id}>{own === "" && module !== null ? words.nameOf(module.name) : words.name}</label>
      <EditedText
        key={entry.index}
        id={id}
        label={words.name}
        value={own}
        isRefused={isRefused}
        describedBy={isRefused ? `${id}-refused` : undefined}
        onCommit={(text) => void nameEntry(entry.index, text.trim())}
      />
      <RefusedAt source="name" id={`${id}-refused`} />
    </div>
  );
}

function SizeField({ label, value, onCommit }: { label: string; value: number; onCommit(bytes: number): void }) {
  const id = useId();
  const commit = (text: string): void => {
    const bytes = wholeNumber(text, 0);
    if (bytes !== undefined) onCommit(bytes);
  };
  return (
    <div class="labelled">
      <label for={id}>{label}</label>
      <EditedText id={id} label={label} value={String(value)} onCommit={commit} />
    </div>
  );
}

function Sizes({ place }: { place: Place }) {
  const { reserve, index } = place.entry;
  if (reserve === null) return null;
  return (
    <>
      <SizeField label={texts.station.reserve.input} value={reserve.in ?? 0} onCommit={(bytes) => void sizeEntry(index, { in: bytes })} />
      <SizeField label={texts.station.reserve.output} value={reserve.out ?? 0} onCommit={(bytes) => void sizeEntry(index, { out: bytes })} />
    </>
  );
}

/** What the selected entry is, with its own name and, for a reserved place, its bytes. */
export function EntryHead({ place }: { place: Place }) {
  const { entry, module } = place;
  return (
    <div class="entry-head">
      <Name place={place} />
      <Sizes place={place} />
      <RefusedAt source="size" />
      {entry.reference !== "" && (
        <p class="entry-facts">
          <a href={address({ view: "module", reference: entry.reference })}>{module?.label ?? entry.reference}</a>{" "}
          <span class="mono faint">{module === null ? "" : `${module.module_id} · `}{entry.reference}</span>
        </p>
      )}
    </div>
  );
}
