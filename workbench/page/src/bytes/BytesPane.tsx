import { useEffect, useRef } from "preact/hooks";
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

/** Scrolls the pane to the bytes of a field that was touched; never below the pointer or the focus. */
function showLit(pane: HTMLElement): void {
  const cell = pane.querySelector(".cell.lit");
  if (cell === null || pane.matches(":hover") || pane.contains(document.activeElement)) return;
  const place = cell.getBoundingClientRect();
  const sight = pane.getBoundingClientRect();
  const end = Math.min(sight.bottom, innerHeight);
  if (place.top < sight.top || place.bottom > end) pane.scrollTop += place.top - (sight.top + end) / 2;
}

/** The parameter image and the registers of a configured module; says when a value is not in them. */
export function BytesPane({ configured, refused, light }: BytesPaneProps) {
  const pane = useRef<HTMLElement>(null);
  useEffect(() => light.lit.watch(() => requestAnimationFrame(() => pane.current !== null && showLit(pane.current))), [light]);
  return (
    <section class="bytes-pane box" aria-label={texts.bytes.title} ref={pane}>
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
