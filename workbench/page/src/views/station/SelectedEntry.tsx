import { useRef } from "preact/hooks";
import type { ConfiguredModule } from "../../api/stationTypes";
import { useStore } from "../../state/store";
import { texts } from "../../texts";
import { draft } from "./draft";
import { EntryHead } from "./EntryHead";
import type { Place } from "./rowPlaces";
import { SelectedParameters } from "./SelectedParameters";

const words = texts.station.entry;

/** Returns the module of the entry as last planned; that of another entry is not shown. */
function useModule(place: Place): ConfiguredModule | null {
  const module = useStore(draft, (value) => value.planned?.module ?? null);
  const last = useRef<{ reference: string; module: ConfiguredModule } | null>(null);
  if (module !== null && module.entry === place.entry.index) last.current = { reference: place.entry.reference, module };
  const kept = last.current;
  return kept !== null && kept.module.entry === place.entry.index && kept.reference === place.entry.reference ? kept.module : null;
}

/** The selected entry of the row: its name, and the parameters of a module. */
export function SelectedEntry({ place }: { place: Place }) {
  const module = useModule(place);
  const description = useStore(draft, (value) => value.descriptions[place.entry.reference]);
  const hasErrors = useStore(draft, (value) => value.answer?.isPlanned === false);
  const isModule = place.entry.reference !== "";
  return (
    <div class="selected-entry">
      <EntryHead place={place} />
      {isModule && hasErrors && <p class="stale-note" role="status">{module === null ? texts.station.notPlanned : words.stale}</p>}
      {!isModule && <p class="faint">{words.reserved}</p>}
      {isModule && module !== null && description !== undefined && (
        <SelectedParameters key={place.entry.index} entry={place.entry} module={module} description={description} />
      )}
      {isModule && module === null && !hasErrors && <p class="faint">{texts.loading}</p>}
    </div>
  );
}
