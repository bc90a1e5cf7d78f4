import type { ComponentChildren } from "preact";
import { useEffect, useRef } from "preact/hooks";

/** A row of a table that is brought into sight, with the focus, when it is chosen elsewhere. */
export function ChosenRow({ isChosen, children }: { isChosen: boolean; children: ComponentChildren }) {
  const row = useRef<HTMLTableRowElement>(null);
  useEffect(() => {
    if (!isChosen) return;
    row.current?.focus();
    row.current?.scrollIntoView({ block: "center" });
  }, [isChosen]);
  return (
    <tr ref={row} tabIndex={isChosen ? -1 : undefined} class={isChosen ? "chosen" : ""}>
      {children}
    </tr>
  );
}
