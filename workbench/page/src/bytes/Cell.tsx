import { useEffect, useRef } from "preact/hooks";
import { memo } from "../parts/memo";
import { useStore } from "../state/store";
import type { Light } from "./light";
import { fieldBits, litBits } from "./places";
import type { Held } from "./places";

const bitNumbers = [7, 6, 5, 4, 3, 2, 1, 0] as const;
const movedMs = 900;
// A frame: the digits keep their contrast on the background.
const movedFrame = "inset 0 0 0 2px";

export interface CellProps {
  index: number;
  hex: string;
  label: string;
  held: readonly Held[];
  /** Tab reaches this cell. */
  isReached: boolean;
  /** A value that holds the byte differs from its default. */
  isMarked: boolean;
  light: Light;
}

/** Lets a byte that has changed be seen for a moment. */
function useMoved(hex: string): { current: HTMLTableCellElement | null } {
  const cell = useRef<HTMLTableCellElement>(null);
  const last = useRef(hex);
  useEffect(() => {
    if (last.current === hex) return;
    last.current = hex;
    if (matchMedia("(prefers-reduced-motion: reduce)").matches) return;
    cell.current?.animate([{ boxShadow: `${movedFrame} var(--lit-line)` }, { boxShadow: `${movedFrame} transparent` }], movedMs);
  }, [hex]);
  return cell;
}

function Bits({ hex, lit, held }: { hex: string; lit: number; held: readonly Held[] }) {
  const fields = fieldBits(held);
  if (fields === 0) return null;
  const value = parseInt(hex, 16);
  const classOf = (bit: number): string =>
    [(value >> bit & 1) === 1 && "one", (lit >> bit & 1) === 1 && "lit", (fields >> bit & 1) === 0 && "free"]
      .filter(Boolean).join(" ");
  return (
    <span class="bits" aria-hidden="true">
      {bitNumbers.map((bit) => <i key={bit} class={classOf(bit)} />)}
    </span>
  );
}

/** A byte of a table. */
export const Cell = memo(function Cell({ index, hex, label, held, isReached, isMarked, light }: CellProps) {
  const lit = useStore(light.lit, (ids) => litBits(held, ids));
  const cell = useMoved(hex);
  const classes = ["cell", held.length === 0 && "free", isMarked && "changed", lit !== 0 && "lit"].filter(Boolean);
  return (
    <td
      ref={cell}
      class={classes.join(" ")}
      data-byte={index}
      tabIndex={isReached ? 0 : -1}
      aria-label={label}
      title={label}
    >
      <span>{hex}</span>
      <Bits hex={hex} lit={lit} held={held} />
    </td>
  );
});
