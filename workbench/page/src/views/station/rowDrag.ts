import { useRef, useState } from "preact/hooks";
import { moveEntry } from "./rowMoves";

/** Dragging an entry of the row to another place. */
export interface RowDrag {
  /** The entry in front of which the dragged one would be put; null: nothing is dragged. */
  target: number | null;
  onDragStart(event: DragEvent): void;
  onDragOver(event: DragEvent): void;
  onDrop(event: DragEvent): void;
  onDragEnd(): void;
}

function entryAt(event: DragEvent): { entry: number; item: HTMLElement } | null {
  const item = event.target instanceof Element ? event.target.closest<HTMLElement>("[data-entry]") : null;
  return item === null ? null : { entry: Number(item.dataset["entry"]), item };
}

/** Returns whether the pointer is in the second half of the item, along the row. */
function isInSecondHalf(event: DragEvent, item: HTMLElement, row: HTMLElement): boolean {
  const box = item.getBoundingClientRect();
  const isVertical = getComputedStyle(row).flexDirection === "column";
  return isVertical
    ? event.clientY > box.top + box.height / 2
    : event.clientX > box.left + box.width / 2;
}

export function useRowDrag(): RowDrag {
  const [target, setTarget] = useState<number | null>(null);
  const dragged = useRef<number | null>(null);
  const onDragStart = (event: DragEvent): void => {
    const at = entryAt(event);
    if (at === null || event.dataTransfer === null) return;
    dragged.current = at.entry;
    event.dataTransfer.effectAllowed = "move";
    event.dataTransfer.setData("text/plain", String(at.entry));
  };
  const onDragOver = (event: DragEvent): void => {
    const at = entryAt(event);
    if (dragged.current === null || at === null) return;
    event.preventDefault();
    setTarget(at.entry + (isInSecondHalf(event, at.item, event.currentTarget as HTMLElement) ? 1 : 0));
  };
  const onDragEnd = (): void => {
    dragged.current = null;
    setTarget(null);
  };
  const onDrop = (event: DragEvent): void => {
    if (dragged.current === null || target === null) return;
    event.preventDefault();
    void moveEntry(dragged.current, target);
    onDragEnd();
  };
  return { target, onDragStart, onDragOver, onDrop, onDragEnd };
}
