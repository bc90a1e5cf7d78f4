import { useEffect, useState } from "preact/hooks";
import { texts } from "../texts";
import { Cell } from "./Cell";
import { useColumns } from "./columns";
import type { Light } from "./light";
import { heldAt } from "./places";
import type { Cover } from "./places";

/** What a row begins with: the number of a byte or of a register of two bytes. */
export type Counted = "byte" | "register";

export interface ByteTableProps {
  label: string;
  bytes: readonly string[];
  /** The number of the first byte. */
  first?: number;
  counted: Counted;
  cover: Cover;
  light: Light;
  /** Bytes with a value that is not the default. */
  marked?: ReadonlySet<number>;
  /** Describes a byte by its number, for screen readers. */
  describe(index: number): string;
  /** The byte that the pointer or the focus is on; null: none. */
  onTouch?(index: number | null): void;
  /** A byte was chosen; `hasFocus`: the focus is to go to what holds it. */
  onChoose?(index: number, hasFocus: boolean): void;
}

function byteOf(target: EventTarget | null): number | null {
  const cell = target instanceof Element ? target.closest<HTMLElement>("[data-byte]") : null;
  return cell === null ? null : Number(cell.dataset["byte"]);
}

function moved(event: KeyboardEvent, index: number, columns: number, count: number): number | null {
  const inRow = index % columns;
  switch (event.key) {
    case "ArrowLeft": return index - 1;
    case "ArrowRight": return index + 1;
    case "ArrowUp": return index - columns;
    case "ArrowDown": return index + columns;
    case "PageUp": return index - 8 * columns < 0 ? inRow : index - 8 * columns;
    case "PageDown": return index + 8 * columns;
    case "Home": return event.ctrlKey ? 0 : index - inRow;
    case "End": return event.ctrlKey ? count - 1 : index - inRow + columns - 1;
    default: return null;
  }
}

function Head({ columns, counted }: { columns: number; counted: Counted }) {
  const width = counted === "register" ? 2 : 1;
  return (
    <thead>
      <tr>
        <th scope="col">{counted === "register" ? texts.bytes.register : texts.bytes.offset}</th>
        {Array.from({ length: columns / width }, (_, index) =>
          <th key={index} scope="col" colSpan={width}>+{index}</th>)}
      </tr>
    </thead>
  );
}

function Row({ props, from, columns, reached }: { props: ByteTableProps; from: number; columns: number; reached: number }) {
  const first = props.first ?? 0;
  const number = props.counted === "register" ? from / 2 : first + from;
  return (
    <tr>
      <th scope="row">{number}</th>
      {props.bytes.slice(from, from + columns).map((hex, column) => {
        const position = from + column;
        const index = first + position;
        return (
          <Cell
            key={index}
            index={index}
            hex={hex}
            label={props.describe(index)}
            held={heldAt(props.cover, index)}
            isReached={position === reached}
            isMarked={props.marked?.has(index) === true}
            light={props.light}
          />
        );
      })}
    </tr>
  );
}

/** What the pointer and the focus do: they light what holds the byte. */
function useTouches(props: ByteTableProps, setReached: (position: number) => void) {
  const { light, cover, onTouch } = props;
  const ids = (index: number | null): string[] | null =>
    index === null ? null : heldAt(cover, index).map((one) => one.id);
  return {
    onPointerOver: (event: PointerEvent): void => {
      const index = byteOf(event.target);
      light.touch(ids(index));
      onTouch?.(index);
    },
    onPointerLeave: (): void => {
      light.touch(null);
      onTouch?.(byteOf(document.activeElement));
    },
    onFocusIn: (event: FocusEvent): void => {
      const index = byteOf(event.target);
      if (index === null) return;
      setReached(index - (props.first ?? 0));
      light.focus(ids(index));
      onTouch?.(index);
      props.onChoose?.(index, false);
    },
    onFocusOut: (): void => {
      light.focus(null);
      onTouch?.(null);
    },
  };
}

/** Bytes in rows. One of them is reached by Tab, the others by arrow keys. */
export function ByteTable(props: ByteTableProps) {
  const { bytes, label, counted, onChoose } = props;
  const { columns, root } = useColumns();
  const [reached, setReached] = useState(0);
  const touches = useTouches(props, setReached);
  useEffect(() => {
    if (reached >= bytes.length) setReached(0);
  }, [bytes.length]);
  const onKeyDown = (event: KeyboardEvent): void => {
    const index = byteOf(event.target);
    if (index === null) return;
    const first = props.first ?? 0;
    if (event.key === "Enter") onChoose?.(index, true);
    else {
      const to = moved(event, index - first, columns, bytes.length);
      if (to === null) return;
      root.current?.querySelector<HTMLElement>(`[data-byte="${first + Math.min(bytes.length - 1, Math.max(0, to))}"]`)?.focus();
    }
    event.preventDefault();
  };
  const rows = Array.from({ length: Math.ceil(bytes.length / columns) }, (_, row) => row * columns);
  return (
    <div class="byte-table" ref={root}>
      <table role="grid" aria-label={label} class={counted} {...touches} onKeyDown={onKeyDown}>
        <Head columns={Math.min(columns, bytes.length)} counted={counted} />
        <tbody>
          {rows.map((from) => <Row key={from} props={props} from={from} columns={columns} reached={reached} />)}
        </tbody>
      </table>
    </div>
  );
}
