import { useState } from "preact/hooks";
import type { Start } from "../../api/types";
import { Menu } from "../../parts/Menu";
import { give } from "../../parts/download";
import { saveState } from "../../state/status";
import { useStore } from "../../state/store";
import { texts } from "../../texts";
import { AddDialog } from "./AddDialog";
import { draft } from "./draft";
import { ExportDialog } from "./ExportDialog";
import { placeName } from "./naming";
import { PinDialog } from "./PinDialog";
import { redo, undo } from "./planning";
import { ReserveDialog } from "./ReserveDialog";
import type { Place } from "./rowPlaces";
import { pinAll, removeSelected, stepSelected } from "./rowMoves";
import { save } from "./saving";

type Shown = "add" | "reserve" | "pin" | "exports" | "";

const words = texts.station.tools;

function downloadText(name: string): void {
  give({ name, content: new Blob([draft.get().text], { type: "text/plain" }) });
}

function entryActions(show: (shown: Shown) => void): Record<string, () => void> {
  return {
    before: () => void stepSelected(-1),
    after: () => void stepSelected(1),
    pin: () => show("pin"),
    remove: () => void removeSelected(),
  };
}

/** What can be done with the selected entry. */
function EntryMenu({ place, show }: { place: Place; show(shown: Shown): void }) {
  const actions = entryActions(show);
  const items = (Object.keys(words.entry) as (keyof typeof words.entry)[])
    .map((key) => ({ key, label: words.entry[key], detail: words.keys[key] }));
  return <Menu label={words.entryOf(placeName(place))} items={items} onChoose={(key) => actions[key]?.()} />;
}

function Saving({ start }: { start: Start }) {
  const state = useStore(saveState);
  if (start.opened === "station") {
    const isIdle = state === "saved" || state === "saving";
    return (
      <button type="button" class="primary" aria-keyshortcuts="Control+S" aria-disabled={isIdle} onClick={() => void save()}>
        {words.save}
      </button>
    );
  }
  return <button type="button" class="primary" onClick={() => downloadText(texts.station.fileName)}>{words.download}</button>;
}

function Steps() {
  const canUndo = useStore(draft, (value) => value.undo.length > 0);
  const canRedo = useStore(draft, (value) => value.redo.length > 0);
  return (
    <>
      <button type="button" aria-disabled={!canUndo} onClick={undo}>{texts.module.undo}</button>
      <button type="button" aria-disabled={!canRedo} onClick={redo}>{texts.module.redo}</button>
    </>
  );
}

/** The actions of the view, and the dialogs that they open. */
export function Toolbar({ start, selected, count }: { start: Start; selected: Place | null; count: number }) {
  const [shown, show] = useState<Shown>("");
  const close = (): void => show("");
  const before = selected === null ? count : selected.entry.index + 1;
  const isPlanned = useStore(draft, (value) => value.answer?.isPlanned === true);
  const module = selected?.module ?? null;
  return (
    <div class="tools" role="group" aria-label={words.label}>
      <button type="button" onClick={() => show("add")}>{words.add}</button>
      <button type="button" onClick={() => show("reserve")}>{words.reserve}</button>
      {selected !== null && <EntryMenu place={selected} show={show} />}
      <button type="button" aria-disabled={!isPlanned || count === 0} onClick={() => isPlanned && void pinAll()}>{words.pinAll}</button>
      <Steps />
      <button type="button" aria-disabled={!isPlanned} onClick={() => isPlanned && show("exports")}>{words.exports}</button>
      <Saving start={start} />
      {shown === "add" && <AddDialog before={before} hasCatalogue={start.catalogue !== null} onClose={close} />}
      {shown === "reserve" && <ReserveDialog before={before} onClose={close} />}
      {shown === "pin" && selected !== null && <PinDialog place={selected} onClose={close} />}
      {shown === "exports" && <ExportDialog formats={start.exports.station} module={module} onClose={close} />}
    </div>
  );
}
