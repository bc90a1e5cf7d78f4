import { useMemo } from "preact/hooks";
import type { ConfiguredModule as Answered, Entry } from "../../api/stationTypes";
import type { ModuleDescription } from "../../api/types";
import type { Refused as RefusedValue } from "../../parameters/Field";
import { ConfiguredModule } from "../../parameters/ConfiguredModule";
import { useStore } from "../../state/store";
import { draft } from "./draft";
import type { Draft } from "./draft";
import { makeChange } from "./planning";

const sourceOf = (id: string): string => `value ${id}`;

function refusedIn(value: Draft): Draft["refused"] {
  return value.refused?.source.startsWith(sourceOf("")) === true ? value.refused : null;
}

function useRefused(): ReadonlyMap<string, RefusedValue> {
  const refused = useStore(draft, refusedIn);
  return useMemo(() => {
    const id = refused?.source.slice(sourceOf("").length) ?? "";
    return refused === null ? new Map() : new Map([[id, { text: refused.text, findings: refused.findings }]]);
  }, [refused]);
}

export interface SelectedParametersProps {
  entry: Entry;
  module: Answered;
  description: ModuleDescription;
}

/** The values of the selected module; each is set in the text of the station. */
export function SelectedParameters({ entry, module, description }: SelectedParametersProps) {
  const refused = useRefused();
  const { configured } = module;
  const set = async (id: string, value: string | null): Promise<void> => {
    const parameter = configured.callNames?.[`#${id}`] ?? `#${id}`;
    await makeChange({ kind: "value", entry: entry.index, parameter, value }, {
      source: sourceOf(id),
      text: value ?? "",
      isShownThere: true,
    });
  };
  return <ConfiguredModule device={description.device} configured={configured} refused={refused} onSet={set} />;
}
