import { useId, useState } from "preact/hooks";
import { ChoiceList } from "../../parts/ChoiceList";
import type { ListedChoice } from "../../parts/ChoiceList";
import { Dialog } from "../../parts/Dialog";
import { Findings } from "../../parts/Findings";
import { texts } from "../../texts";
import { useCandidates } from "./candidates";
import type { Candidate } from "./candidates";
import { PlaceChoice } from "./PlaceChoice";
import { RefusedAt } from "./RefusedAt";
import { addModule } from "./rowMoves";

const words = texts.station.add;

/** The label of a module, beside it the name by which a station has it. */
function choicesOf(all: readonly Candidate[]): ListedChoice[] {
  return all.map(({ reference, label }) =>
    label === "" ? { key: reference, label: reference } : { key: reference, label, detail: reference });
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
  const add = ({ key, label }: ListedChoice): void => {
    void addModule(key, name.trim(), place, label).then((isMade) => isMade && onClose());
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
      <p class="faint">{words.explained}</p>
      <RefusedAt source="add" />
      <div class="candidate-lists" role="region" aria-label={words.choices} tabIndex={0}>
        <ChoiceList title={words.files} all={choicesOf(files)} onChoose={add} />
        <ChoiceList title={words.catalogue} all={choicesOf(ofCatalogue)} onChoose={add} />
        {isEmpty && <p class="faint">{words.none}</p>}
        <Findings findings={findings} />
      </div>
    </Dialog>
  );
}
