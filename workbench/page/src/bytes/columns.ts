import { useEffect, useRef, useState } from "preact/hooks";

const narrowPx = 260;
const widePx = 496;

function columnsFor(width: number): number {
  if (width >= widePx) return 16;
  return width >= narrowPx ? 8 : 4;
}

/** Returns how many bytes fit into a row of the element, and the reference that it needs. */
export function useColumns(): { columns: number; root: { current: HTMLDivElement | null } } {
  const root = useRef<HTMLDivElement>(null);
  const [columns, setColumns] = useState(8);
  useEffect(() => {
    if (root.current === null) return undefined;
    const observer = new ResizeObserver((entries) => {
      const width = entries[0]?.contentRect.width ?? 0;
      if (width > 0) setColumns(columnsFor(width));
    });
    observer.observe(root.current);
    return () => observer.disconnect();
  }, []);
  return { columns, root };
}
