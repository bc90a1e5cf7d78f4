import type { Configured } from "../api/types";
import { Findings } from "../parts/Findings";
import type { Refused } from "../parameters/Field";
import { texts } from "../texts";
import { ConfiguredBytes } from "./ConfiguredBytes";
import type { Light } from "./light";

interface BytesPaneProps {
  configured: Configured;
  refused: ReadonlyMap<string, Refused> | undefined;
  light: Light;
}

function Stale({ refused, light }: Omit<BytesPaneProps, "configured">) {
  const first = refused?.keys().next().value;
  if (refused === undefined || first === undefined) return null;
  return (
    <p class="stale">
      <span>{texts.bytes.stale(refused.size)}</span>
      <button type="button" class="small" onClick={() => light.show(first, true)}>{texts.bytes.showRefused}</button>
    </p>
  );
}

/** The parameter image and the registers of a configured module; says when a value is not in them. */
export function BytesPane({ configured, refused, light }: BytesPaneProps) {
  return (
    <section class="bytes-pane box" aria-label={texts.bytes.title}>
      <Stale refused={refused} light={light} />
      <ConfiguredBytes config={configured.raw} light={light} />
      {configured.modbus !== null && <ConfiguredBytes config={configured.modbus} light={light} />}
      {configured.noRegisters !== null && (
        <section class="bytes">
          <h2>{texts.bytes.registers}</h2>
          <Findings findings={[configured.noRegisters]} />
        </section>
      )}
    </section>
  );
}
