import { useEffect } from "preact/hooks";
import type { Light } from "../bytes/light";
import { focusControl } from "./focus";

const flashMs = 700;

function flash(field: HTMLElement): void {
  if (matchMedia("(prefers-reduced-motion: reduce)").matches) return;
  field.animate([{ outline: "2px solid var(--lit-line)" }, { outline: "2px solid transparent" }], flashMs);
}

function bring(root: HTMLElement | null, id: string, hasFocus: boolean): boolean {
  const field = root?.querySelector<HTMLElement>(`[data-parameter="${CSS.escape(id)}"]`);
  if (field === null || field === undefined) return false;
  const group = field.closest("details");
  if (group !== null) group.open = true;
  field.scrollIntoView({ block: "nearest" });
  flash(field);
  if (hasFocus) focusControl(field);
  return true;
}

/** Brings the field that `light.show` asks for into view; `onHidden`: shows fields that a filter hides. */
export function useShown(light: Light, root: { current: HTMLElement | null }, onHidden: () => void): void {
  useEffect(() => light.shown.watch(() => {
    const wanted = light.shown.get();
    if (wanted === null || bring(root.current, wanted.id, wanted.hasFocus)) return;
    onHidden();
    setTimeout(() => bring(root.current, wanted.id, wanted.hasFocus));
  }), [light]);
}
