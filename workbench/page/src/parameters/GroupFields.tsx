import { useRef } from "preact/hooks";
import type { ConfigParameter, DeviceParameter } from "../api/types";
import { hasWords } from "../state/words";
import { texts } from "../texts";
import type { Filter } from "./EditorTools";
import { Field } from "./Field";
import type { Refused } from "./Field";
import type { Group } from "./groups";
import type { Light } from "../bytes/light";

interface GroupFieldsProps {
  groups: readonly Group[];
  values: ReadonlyMap<string, ConfigParameter>;
  refused: ReadonlyMap<string, Refused>;
  drafts: ReadonlyMap<string, string>;
  filter: Filter;
  light: Light;
  onCommit(id: string, text: string | null): void;
}

function isNotDefault(id: string, { values, refused }: GroupFieldsProps): boolean {
  return values.get(id)?.changed === true || refused.has(id);
}

/** Returns whether a field is shown; one that was shown as changed stays, so that it keeps the focus. */
function useFilter(props: GroupFieldsProps): (group: Group, parameter: DeviceParameter) => boolean {
  const { words, isChangedOnly } = props.filter;
  const kept = useRef(new Set<string>());
  if (!isChangedOnly) kept.current.clear();
  return (group, { id, name }) => {
    if (isChangedOnly && isNotDefault(id, props)) kept.current.add(id);
    return (!isChangedOnly || kept.current.has(id)) && hasWords(words, group.title, name);
  };
}

function Counts({ group, props }: { group: Group; props: GroupFieldsProps }) {
  const { values, refused } = props;
  const changed = group.parameters.filter((one) => values.get(one.id)?.changed).length;
  const wrong = group.parameters.filter((one) => refused.has(one.id)).length;
  return (
    <>
      <span class="faint">{texts.parameters.count(group.parameters.length)}</span>
      {changed > 0 && <span class="badge-changed">{texts.parameters.changed(changed)}</span>}
      {wrong > 0 && <span class="badge-refused">{texts.parameters.refused(wrong)}</span>}
    </>
  );
}

function Fields({ parameters, props }: { parameters: readonly DeviceParameter[]; props: GroupFieldsProps }) {
  const { values, refused, drafts, light, onCommit } = props;
  return (
    <div class="group-fields">
      {parameters.map((parameter) => {
        const configured = values.get(parameter.id);
        return configured === undefined ? null : (
          <Field
            key={parameter.id}
            parameter={parameter}
            configured={configured}
            refused={refused.get(parameter.id)}
            draft={drafts.get(parameter.id)}
            light={light}
            onCommit={onCommit}
          />
        );
      })}
    </div>
  );
}

/** The fields by group, each group with its counts. */
export function GroupFields(props: GroupFieldsProps) {
  const isShown = useFilter(props);
  const shown = props.groups
    .map((group) => ({ group, parameters: group.parameters.filter((one) => isShown(group, one)) }))
    .filter(({ parameters }) => parameters.length > 0);
  if (shown.length === 0) return <p class="faint">{texts.parameters.noneFound}</p>;
  return (
    <div class="groups">
      {shown.map(({ group, parameters }) => (
        <details key={group.key} class="group box" open>
          <summary>
            <h2>{group.title}</h2>
            <Counts group={group} props={props} />
          </summary>
          <Fields parameters={parameters} props={props} />
        </details>
      ))}
    </div>
  );
}
