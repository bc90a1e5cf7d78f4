import { useEffect, useId, useRef, useState } from "preact/hooks";

export interface MenuItem {
  key: string;
  label: string;
}

export interface MenuProps {
  label: string;
  items: readonly MenuItem[];
  onChoose(key: string): void;
}

const steps: Record<string, (index: number, count: number) => number> = {
  ArrowDown: (index, count) => (index + 1) % count,
  ArrowUp: (index, count) => (index + count - 1) % count,
  Home: () => 0,
  End: (_, count) => count - 1,
};

function itemsOf(list: HTMLElement | null): HTMLElement[] {
  return [...(list?.querySelectorAll<HTMLElement>("[role=menuitem]") ?? [])];
}

function moveFocus(list: HTMLElement | null, key: string): boolean {
  const step = steps[key];
  const all = itemsOf(list);
  if (step === undefined || all.length === 0) return false;
  all[step(all.indexOf(document.activeElement as HTMLElement), all.length)]?.focus();
  return true;
}

/** A button that opens a list of actions. */
export function Menu({ label, items, onChoose }: MenuProps) {
  const [isOpen, setOpen] = useState(false);
  const root = useRef<HTMLDivElement>(null);
  const list = useRef<HTMLUListElement>(null);
  const id = useId();
  useEffect(() => {
    if (!isOpen) return undefined;
    itemsOf(list.current)[0]?.focus();
    const leave = (event: Event): void => {
      if (!root.current?.contains(event.target as Node)) setOpen(false);
    };
    addEventListener("pointerdown", leave);
    return () => removeEventListener("pointerdown", leave);
  }, [isOpen]);
  const close = (): void => {
    setOpen(false);
    root.current?.querySelector("button")?.focus();
  };
  const choose = (key: string): void => {
    close();
    onChoose(key);
  };
  const onKeyDown = (event: KeyboardEvent): void => {
    if (event.key === "Escape" && isOpen) close();
    else if (event.key === "Tab") setOpen(false);
    else if (!isOpen || !moveFocus(list.current, event.key)) return;
    if (event.key !== "Tab") event.preventDefault();
  };
  return (
    <div class="menu" ref={root} onKeyDown={onKeyDown}>
      <button
        type="button"
        aria-haspopup="menu"
        aria-expanded={isOpen}
        aria-controls={isOpen ? id : undefined}
        onClick={() => setOpen(!isOpen)}
      >
        {label} <span aria-hidden="true">▾</span>
      </button>
      {isOpen && (
        <ul role="menu" id={id} aria-label={label} ref={list}>
          {items.map((item) => (
            <li key={item.key} role="none">
              <button type="button" role="menuitem" tabIndex={-1} onClick={() => choose(item.key)}>
                {item.label}
              </button>
            </li>
          ))}
        </ul>
      )}
    </div>
  );
}
