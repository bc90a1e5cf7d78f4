import { texts } from "../texts";

/** Which fields are shown. */
export interface Filter {
  words: string;
  isChangedOnly: boolean;
}

interface EditorToolsProps {
  filter: Filter;
  onFilter(filter: Filter): void;
  root: { current: HTMLElement | null };
  hasGroups: boolean;
}

function setOpen(root: HTMLElement | null, isOpen: boolean): void {
  for (const group of root?.querySelectorAll("details") ?? []) group.open = isOpen;
}

/** Search, filter and folding of the fields. */
export function EditorTools({ filter, onFilter, root, hasGroups }: EditorToolsProps) {
  return (
    <div class="tools">
      <input
        type="search"
        autoComplete="off"
        spellcheck={false}
        aria-label={texts.parameters.filter}
        placeholder={texts.parameters.filter}
        value={filter.words}
        onInput={(event) => onFilter({ ...filter, words: event.currentTarget.value })}
      />
      <label class="check">
        <input
          type="checkbox"
          checked={filter.isChangedOnly}
          onChange={(event) => onFilter({ ...filter, isChangedOnly: event.currentTarget.checked })}
        />
        {texts.parameters.onlyChanged}
      </label>
      {hasGroups && (
        <span class="folding">
          <button type="button" class="small" onClick={() => setOpen(root.current, true)}>{texts.parameters.openAll}</button>
          <button type="button" class="small" onClick={() => setOpen(root.current, false)}>{texts.parameters.closeAll}</button>
        </span>
      )}
    </div>
  );
}
