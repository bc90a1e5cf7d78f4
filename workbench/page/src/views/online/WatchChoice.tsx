import { useId, useMemo, useState } from "preact/hooks";
import type { StationAnswer } from "../../api/stationTypes";
import { useStore } from "../../state/store";
import { texts } from "../../texts";
import { draft } from "../station/draft";

const words = texts.online.live;

function namesIn(planned: StationAnswer | null): string[] {
  const modules = planned?.plan?.modules.map((one) => one.name) ?? [];
  const channels = planned?.channels?.channels.map((one) => one.alias || `${one.module_name}/${one.name}`) ?? [];
  return [...modules, ...channels];
}

export interface WatchChoiceProps {
  chosen: readonly string[];
  onChange(names: readonly string[]): void;
}

/** Chooses what is read: modules and channels by name; none: all. */
export function WatchChoice({ chosen, onChange }: WatchChoiceProps) {
  const [typed, setTyped] = useState("");
  const planned = useStore(draft, (value) => value.planned);
  const names = useMemo(() => namesIn(planned), [planned]);
  const id = useId();
  const add = (event: Event): void => {
    event.preventDefault();
    const name = typed.trim();
    if (name !== "" && !chosen.includes(name)) onChange([...chosen, name]);
    setTyped("");
  };
  return (
    <form class="watch-choice" onSubmit={add}>
      <div class="labelled">
        <label for={id}>{words.names}</label>
        <input
          id={id}
          type="text"
          list={`${id}-names`}
          autoComplete="off"
          placeholder={words.all}
          value={typed}
          onInput={(event) => setTyped(event.currentTarget.value)}
        />
        <datalist id={`${id}-names`}>{names.map((name) => <option key={name} value={name} />)}</datalist>
      </div>
      <button type="submit">{words.add}</button>
      <ul class="chips">
        {chosen.map((name) => (
          <li key={name}>
            <span>{name}</span>
            <button
              type="button"
              class="quiet"
              aria-label={words.remove(name)}
              onClick={() => onChange(chosen.filter((one) => one !== name))}
            >✕</button>
          </li>
        ))}
      </ul>
    </form>
  );
}
