import { useId, useMemo } from "preact/hooks";
import type { ConfigParameter, DeviceParameter, Finding } from "../api/types";
import { Findings } from "../parts/Findings";
import { memo } from "../parts/memo";
import { useStore } from "../state/store";
import { texts } from "../texts";
import { Choices, NumberField, Segments, Switch } from "./controls";
import type { Light } from "../bytes/light";
import { focusControl } from "./focus";
import { choicesOf, kindOf } from "./options";

/** A text that was not accepted as a value, and why. */
export interface Refused {
  text: string;
  findings: readonly Finding[];
}

export interface FieldProps {
  parameter: DeviceParameter;
  configured: ConfigParameter;
  refused: Refused | undefined;
  /** What was chosen and is not yet answered. */
  draft: string | undefined;
  light: Light;
  /** null: the default. Must stay the same function. */
  onCommit(id: string, text: string | null): void;
}

function rangeOf(parameter: DeviceParameter): string {
  const { min_digits: least, max_digits: most, unit } = parameter;
  if (kindOf(parameter) !== "number" || least === "" || most === "") return "";
  return texts.parameters.range(least, most, unit);
}

function placeOf({ byte, size, bit_offset: bit, bit_length: bits }: ConfigParameter): string {
  return bits === 0
    ? texts.parameters.bytesAt(byte, byte + size - 1)
    : texts.parameters.bitsAt(byte, bit, bit + bits - 1);
}

function Control({ parameter, configured, refused, draft, onCommit, id, describedBy }: FieldProps & { id: string; describedBy: string }) {
  const kind = kindOf(parameter);
  const choices = useMemo(() => (kind === "number" ? [] : choicesOf(parameter)), [parameter]);
  const current = kind === "number"
    ? configured.digits
    : choices.find((one) => one.value === configured.value)?.word ?? configured.digits;
  const props = {
    id,
    describedBy,
    name: parameter.name,
    value: draft ?? refused?.text ?? current,
    isRefused: refused !== undefined,
    onCommit: (text: string) => onCommit(parameter.id, text),
  };
  const forget = (): void => onCommit(parameter.id, configured.changed ? current : null);
  switch (kind) {
    case "switch": return <Switch {...props} choices={choices} shown={configured.shown} />;
    case "segments": return <Segments {...props} choices={choices} shown={configured.shown} />;
    case "choice": return <Choices {...props} choices={choices} shown={configured.shown} />;
    case "number": return <NumberField {...props} unit={parameter.unit} onForget={forget} />;
  }
}

function defaultOf(parameter: DeviceParameter, configured: ConfigParameter): string {
  if (kindOf(parameter) !== "switch") return configured.default_shown;
  return choicesOf(parameter).find((one) => one.value === configured.default)?.text ?? configured.default_shown;
}

function Default({ parameter, configured, onCommit }: FieldProps) {
  const shown = defaultOf(parameter, configured);
  return (
    <span class="default">
      <span>{texts.parameters.default(shown)}</span>
      <button
        type="button"
        class="small"
        aria-label={texts.parameters.toDefaultOf(parameter.name, shown)}
        onClick={(event) => {
          focusControl(event.currentTarget.closest(".field"));
          onCommit(parameter.id, null);
        }}
      >{texts.parameters.toDefault}</button>
    </span>
  );
}

function classOf(isLit: boolean, configured: ConfigParameter, refused: Refused | undefined): string {
  return ["field", isLit && "lit", configured.changed && "changed", refused !== undefined && "refused"]
    .filter(Boolean).join(" ");
}

/** A parameter: name, control, range, place; the default if it has another value; why it was refused. */
export const Field = memo(function Field(props: FieldProps) {
  const { parameter, configured, refused, light, onCommit } = props;
  const isLit = useStore(light.lit, (lit) => lit.has(parameter.id));
  const id = useId();
  const isOutside = configured.digits === "";
  const describedBy = refused === undefined ? `${id}-hint` : `${id}-hint ${id}-refused`;
  return (
    <div
      class={classOf(isLit, configured, refused)}
      data-parameter={parameter.id}
      onPointerEnter={() => light.touch([parameter.id])}
      onPointerLeave={() => light.touch(null)}
      onFocusIn={() => light.focus([parameter.id])}
      onFocusOut={() => light.focus(null)}
    >
      {kindOf(parameter) === "segments" ? <span>{parameter.name}</span> : <label for={id}>{parameter.name}</label>}
      <div class="control">
        {isOutside ? <output id={id}>{configured.shown}</output> : <Control {...props} id={id} describedBy={describedBy} />}
      </div>
      <div class="field-end">
        <p class="field-hint" id={`${id}-hint`}>
          <span>{rangeOf(parameter)}</span>
          <span class="field-place">{placeOf(configured)}</span>
        </p>
        {(configured.changed || refused !== undefined) && <Default {...props} />}
      </div>
      {refused !== undefined && (
        <div class="field-refused" id={`${id}-refused`}>
          <Findings
            findings={refused.findings}
            hasPlaces={false}
            onAccept={parameter.has_option_list ? (text) => onCommit(parameter.id, text) : undefined}
          />
        </div>
      )}
    </div>
  );
});
