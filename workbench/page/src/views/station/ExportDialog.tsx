import { useId, useState } from "preact/hooks";
import { exportStation } from "../../api/stationCalls";
import type { StationExportChoice } from "../../api/stationTypes";
import type { Export } from "../../api/types";
import { ChoiceList } from "../../parts/ChoiceList";
import type { ListedChoice } from "../../parts/ChoiceList";
import { Dialog } from "../../parts/Dialog";
import { download } from "../../parts/download";
import { texts } from "../../texts";
import { draft } from "./draft";
import { inTurn } from "./planning";

const words = texts.station.exports;

type Address = NonNullable<StationExportChoice["address"]>;
type Scope = NonNullable<StationExportChoice["scope"]>;
type Separator = NonNullable<StationExportChoice["separator"]>;
type Mark = keyof typeof words.byteOrderMarks;

interface ChoiceProps<Key extends string> {
  label: string;
  value: Key;
  all: Readonly<Record<Key, string>>;
  onChange(key: Key): void;
}

function Choice<Key extends string>({ label, value, all, onChange }: ChoiceProps<Key>) {
  const id = useId();
  return (
    <div class="labelled">
      <label for={id}>{label}</label>
      <select id={id} value={value} onChange={(event) => onChange(event.currentTarget.value as Key)}>
        {(Object.keys(all) as Key[]).map((key) => <option key={key} value={key}>{all[key]}</option>)}
      </select>
    </div>
  );
}

function choicesOf(formats: readonly Export[], isOfModule: boolean): ListedChoice[] {
  return formats.filter((one) => one.isOfModule === isOfModule).map(({ format, label }) => ({ key: format, label }));
}

export interface ExportDialogProps {
  formats: readonly Export[];
  /** The selected module; null: none. */
  module: { position: number; name: string } | null;
  onClose(): void;
}

/** The forms in which the station or the selected module is downloaded. */
export function ExportDialog({ formats, module, onClose }: ExportDialogProps) {
  const [address, setAddress] = useState<Address>("byte");
  const [scope, setScope] = useState<Scope>("global");
  const [separator, setSeparator] = useState<Separator>("comma");
  const [mark, setMark] = useState<Mark>("no");
  const give = (choice: StationExportChoice): void => {
    const all = { ...choice, address, scope, separator, byteOrderMark: mark === "yes" };
    void download(inTurn(() => exportStation(draft.get().text, all)));
  };
  return (
    <Dialog title={words.title} onClose={onClose}>
      <ChoiceList title={words.ofStation} all={choicesOf(formats, false)} onChoose={({ key }) => give({ format: key })} />
      {module !== null && (
        <ChoiceList
          title={words.ofModule(module.name)}
          all={choicesOf(formats, true)}
          onChoose={({ key }) => give({ format: key, module: module.position })}
        />
      )}
      <div class="side-by-side" role="group" aria-label={words.declarations}>
        <Choice<Address> label={words.address} value={address} all={words.addresses} onChange={(key) => setAddress(key)} />
        <Choice<Scope> label={words.scope} value={scope} all={words.scopes} onChange={(key) => setScope(key)} />
      </div>
      <div class="side-by-side" role="group" aria-label={words.csv}>
        <Choice<Separator> label={words.separator} value={separator} all={words.separators} onChange={(key) => setSeparator(key)} />
        <Choice<Mark> label={words.byteOrderMark} value={mark} all={words.byteOrderMarks} onChange={(key) => setMark(key)} />
      </div>
    </Dialog>
  );
}
