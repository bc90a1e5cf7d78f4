import { useMemo } from "preact/hooks";
import { BytesPane } from "../bytes/BytesPane";
import { Light } from "../bytes/light";
import { useShared } from "../state/shared";
import { ParameterEditor } from "./ParameterEditor";
import type { ParameterEditorProps } from "./ParameterEditor";

/** The parameters of a module as fields, and beside them the bytes that they make. */
export function ConfiguredModule(props: Omit<ParameterEditorProps, "light">) {
  const light = useMemo(() => new Light(), []);
  const configured = useShared(props.configured);
  return (
    <div class="configured">
      <ParameterEditor {...props} light={light} />
      <BytesPane configured={configured} refused={props.refused} light={light} />
    </div>
  );
}
