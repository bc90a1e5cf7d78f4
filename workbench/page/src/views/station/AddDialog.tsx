import { useId, useState } from "preact/hooks";
import { Dialog } from "../../parts/Dialog";
import { Findings } from "../../parts/Findings";
import { texts } from "../../texts";
import { useCandidates } from "./candidates";
import type { Candidate } from "./candidates";
import { PlaceChoice } from "./PlaceChoice";
import { RefusedAt } from "./RefusedAt";
import { addModule } from "./rowMoves";

const words = texts.station.add;

function List({ title, all, onAdd }: { title: string; all: readonly Candidate[]; onAdd(one: Candidate): void }) {
  const id = useId();
  if (all.length === 0) return null;
  return (
    <section aria-labelledby={id}>
      <h3 id={id}>{title}</h3>
      <ul class="candidates">
        {all.map((one) => (
          <li key={one.reference}>
            <button type="button" onClick={() => onAdd(one)}>
              <span>{one.label === "" ? one.reference : one.label}</span>{" "}
              {one.label !== "" && <span class="mono faint">{one.reference}</span>}
            </button>
          </li>
        ))}
      </ul>
    </section>
  );
}

export interface AddDialogProps {
  before: number;
  hasCatalogue: boolean;
  onClose(): void;
}

/** Chooses a module of the catalogue or of the folder, and adds it at a place of the row. */
export function AddDialog({ before, hasCatalogue, onClose }: AddDialogProps) {
  const [sought, setSought] = useState("");
  const [name, setName] = useState("");
  const [place, setPlace] = useState(before);
  const { files, ofCatalogue, findings } = useCandidates(sought, hasCatalogue);
  const id = useId();
  const add = ({ reference, label }: Candidate): void => {
    void addModule(reference, name.trim(), place, label === "" ? reference : label).then((isMade) => isMade && onClose());
  };
  const isEmpty = files.length === 0 && ofCatalogue.length === 0;
  return (
    <Dialog title={words.title} onClose={onClose}>
      <div class="labelled">
        <label for={`${id}-words`}>{words.search}</label>
        <input
          id={`${id}-words`}
          type="search"
          autofocus
          autoComplete="off"
          value={sought}
          onInput={(event) => setSought(event.currentTarget.value)}
        />
      </div>
      <div class="side-by-side">
        <PlaceChoice value={place} onChange={setPlace} />
        <div class="labelled">
          <label for={`${id}-name`}>{words.name}</label>
          <input id={`${id}-name`} type="text" autoComplete="off" value={name} onInput={(event) => setName(event.currentTarget.value)} />
        </div>
      </div>
      <RefusedAt source="add" />
      <div class="candidate-lists" role="region" aria-label={words.choices} tabIndex={0}>
        <List title={words.files} all={files} onAdd={add} />
        <List title={words.catalogue} all={ofCatalogue} onAdd={add} />
        {isEmpty && <p class="faint">{words.none}</p>}
        <Findings findings={findings} />
      </div>
    </Dialog>
  );
}
