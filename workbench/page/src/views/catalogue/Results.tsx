import { useEffect, useRef } from "preact/hooks";
import type { CatalogueModule } from "../../api/types";
import { memo } from "../../parts/memo";
import { useRoving } from "../../parts/roving";
import { address } from "../../state/route";
import { texts } from "../../texts";

export type AddModule = (reference: string, label: string) => void;

function Name({ module, isReached }: { module: CatalogueModule; isReached: boolean }) {
  const label = module.label === "" ? texts.catalogue.unnamed : module.label;
  if (!module.hasContent) return <span title={texts.catalogue.noContent}>{label}</span>;
  return <a href={address({ view: "module", reference: module.reference })} tabIndex={isReached ? 0 : -1}>{label}</a>;
}

interface RowProps {
  module: CatalogueModule;
  index: number;
  isReached: boolean;
  onAdd: AddModule | undefined;
}

const Row = memo(function Row({ module, index, isReached, onAdd }: RowProps) {
  const { columns, bytes } = texts.catalogue;
  return (
    <tr data-item={index}>
      <th scope="row"><Name module={module} isReached={isReached} /></th>
      <td class="mono" data-label={columns.reference}>{module.reference}</td>
      <td data-label={columns.family}>{module.family}</td>
      <td class="number" data-label={columns.input}>{bytes(module.inputSize)}</td>
      <td class="number" data-label={columns.output}>{bytes(module.outputSize)}</td>
      <td class="number" data-label={columns.parameters}>{bytes(module.parameterSize)}</td>
      <td class="number" data-label={columns.file}>{bytes(module.fileSize)}</td>
      {onAdd !== undefined && (
        <td class="actions">
          <button
            type="button"
            class="small"
            tabIndex={isReached ? 0 : -1}
            aria-label={texts.catalogue.addOf(module.label)}
            onClick={() => onAdd(module.reference, module.label)}
          >{texts.catalogue.add}</button>
        </td>
      )}
    </tr>
  );
});

/** Whether the keyboard is at the button for more modules, or was at it before it was removed. */
function isAtButton(focused: Element | null): boolean {
  return focused === document.body || focused?.classList.contains("more") === true;
}

interface ResultsProps {
  modules: readonly CatalogueModule[];
  /** Loads more modules; undefined: there are none. */
  onMore: (() => void) | undefined;
  onAdd: AddModule | undefined;
}

/** The modules found: a table, on narrow screens a card for each. */
export function Results({ modules, onMore, onAdd }: ResultsProps) {
  const section = useRef<HTMLDivElement>(null);
  const firstNew = useRef<number | null>(null);
  useEffect(() => {
    const index = firstNew.current;
    firstNew.current = null;
    if (index === null || !isAtButton(document.activeElement)) return;
    section.current?.querySelector(`[data-item="${index}"]`)?.querySelector<HTMLElement>("a, button")?.focus();
  }, [modules]);
  const more = (): void => {
    firstNew.current = modules.length;
    onMore?.();
  };
  return (
    <div ref={section}>
      <Table modules={modules} onAdd={onAdd} />
      {onMore !== undefined && <button type="button" class="more" onClick={more}>{texts.catalogue.more}</button>}
    </div>
  );
}

function Table({ modules, onAdd }: { modules: readonly CatalogueModule[]; onAdd: AddModule | undefined }) {
  const roving = useRoving(modules.length);
  const { columns } = texts.catalogue;
  return (
    <table class="cards" onKeyDown={roving.onKeyDown} onFocusIn={roving.onFocusIn}>
      <caption class="heard">{texts.catalogue.results}</caption>
      <thead>
        <tr>
          <th scope="col">{columns.label}</th>
          <th scope="col">{columns.reference}</th>
          <th scope="col">{columns.family}</th>
          <th scope="col" class="number">{columns.input}</th>
          <th scope="col" class="number">{columns.output}</th>
          <th scope="col" class="number">{columns.parameters}</th>
          <th scope="col" class="number">{columns.file}</th>
          {onAdd !== undefined && <th scope="col"><span class="heard">{columns.actions}</span></th>}
        </tr>
      </thead>
      <tbody>
        {modules.map((module, index) => (
          <Row key={`${module.family}/${module.reference}`} module={module} index={index} isReached={index === roving.current} onAdd={onAdd} />
        ))}
      </tbody>
    </table>
  );
}
