import { useEffect, useMemo, useRef, useState } from "preact/hooks";
import type { Configured, Device } from "../api/types";
import { say } from "../state/announcements";
import { useShared } from "../state/shared";
import { texts } from "../texts";
import { EditorTools } from "./EditorTools";
import type { Filter } from "./EditorTools";
import type { Refused } from "./Field";
import { GroupFields } from "./GroupFields";
import { byId, groupsOf } from "./groups";
import { Light } from "../bytes/light";
import { useDrafts } from "./drafts";
import { useShown } from "./useShown";

export interface ParameterEditorProps {
  device: Device;
  configured: Configured;
  /** Texts that were not accepted, by the identifiers of their parameters. */
  refused?: ReadonlyMap<string, Refused>;
  /** Lights the fields together with bytes. */
  light?: Light;
  /** Sets a value, null: the default. A text is shown in its field until the promise is done. */
  onSet(parameterId: string, text: string | null): void | Promise<void>;
}

const noneRefused: ReadonlyMap<string, Refused> = new Map();
const everything: Filter = { words: "", isChangedOnly: false };

/** Has a screen reader say what became of the value that was set last. */
function useSpoken(lastSet: { current: string | null }, configured: Configured, refused: ReadonlyMap<string, Refused>): void {
  useEffect(() => {
    const parameter = configured.raw.parameters.find((one) => one.id === lastSet.current);
    if (parameter === undefined) return;
    lastSet.current = null;
    const reason = refused.get(parameter.id)?.findings[0]?.text;
    if (reason === undefined) say(texts.parameters.setAnnounced(parameter.name, parameter.shown));
    else say(texts.parameters.refusedAnnounced(parameter.name, reason), true);
  }, [configured, refused]);
}

/** The parameters of a module as fields, by channel. It does not know where values go. */
export function ParameterEditor(props: ParameterEditorProps) {
  const device = useShared(props.device);
  const configured = useShared(props.configured);
  const refused = props.refused ?? noneRefused;
  const ownLight = useMemo(() => new Light(), []);
  const light = props.light ?? ownLight;
  const root = useRef<HTMLDivElement>(null);
  const [filter, setFilter] = useState(everything);
  const groups = useMemo(() => groupsOf(device), [device]);
  const values = useMemo(() => byId(configured.raw.parameters), [configured]);
  const { drafts, commit, lastSet } = useDrafts(props.onSet);
  useSpoken(lastSet, props.configured, refused);
  useShown(light, root, () => setFilter(everything));
  if (device.parameters.length === 0) return <p class="faint">{texts.parameters.none}</p>;
  return (
    <div class="editor" ref={root}>
      <EditorTools filter={filter} onFilter={setFilter} root={root} hasGroups={groups.length > 1} />
      <GroupFields
        groups={groups}
        values={values}
        refused={refused}
        drafts={drafts}
        filter={filter}
        light={light}
        onCommit={commit}
      />
    </div>
  );
}
