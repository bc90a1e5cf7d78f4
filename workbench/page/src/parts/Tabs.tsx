import { useId } from "preact/hooks";
import type { ComponentChildren } from "preact";

export interface TabsProps<Key extends string> {
  label: string;
  tabs: readonly { key: Key; text: string }[];
  chosen: Key;
  onChoose(key: Key): void;
  children: ComponentChildren;
}

const steps: Record<string, (index: number, count: number) => number> = {
  ArrowRight: (index, count) => (index + 1) % count,
  ArrowLeft: (index, count) => (index + count - 1) % count,
  Home: () => 0,
  End: (_, count) => count - 1,
};

/** Tabs and the panel of the chosen one. */
export function Tabs<Key extends string>({ label, tabs, chosen, onChoose, children }: TabsProps<Key>) {
  const id = useId();
  const onKeyDown = (event: KeyboardEvent): void => {
    const step = steps[event.key];
    if (step === undefined) return;
    const to = tabs[step(tabs.findIndex((one) => one.key === chosen), tabs.length)];
    if (to === undefined) return;
    event.preventDefault();
    onChoose(to.key);
    (event.currentTarget as HTMLElement).querySelector<HTMLElement>(`[data-tab="${to.key}"]`)?.focus();
  };
  return (
    <>
      <div class="tabs" role="tablist" aria-label={label} onKeyDown={onKeyDown}>
        {tabs.map(({ key, text }) => (
          <button
            key={key}
            type="button"
            role="tab"
            data-tab={key}
            id={`${id}-${key}`}
            aria-selected={key === chosen}
            aria-controls={key === chosen ? `${id}-panel` : undefined}
            tabIndex={key === chosen ? 0 : -1}
            onClick={() => onChoose(key)}
          >{text}</button>
        ))}
      </div>
      <div class="panel" role="tabpanel" id={`${id}-panel`} aria-labelledby={`${id}-${chosen}`}>{children}</div>
    </>
  );
}
