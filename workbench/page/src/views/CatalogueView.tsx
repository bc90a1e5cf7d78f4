import { useId } from "preact/hooks";
import type { Start } from "../api/types";
import { Findings } from "../parts/Findings";
import { useStore } from "../state/store";
import { texts } from "../texts";
import { Conditions } from "./catalogue/Conditions";
import { Folder } from "./catalogue/Folder";
import { Results } from "./catalogue/Results";
import type { AddModule } from "./catalogue/Results";
import { query, useSearch } from "./catalogue/search";

function Words() {
  const id = useId();
  const { words } = useStore(query);
  return (
    <div class="labelled wide">
      <label for={id}>{texts.catalogue.words}</label>
      <input
        id={id}
        type="search"
        autoComplete="off"
        spellcheck={false}
        placeholder={texts.catalogue.wordsHint}
        value={words}
        onInput={(event) => query.set({ ...query.get(), words: event.currentTarget.value })}
      />
    </div>
  );
}

function Found({ onAdd }: { onAdd: AddModule | undefined }) {
  const { modules, findings, isSearching } = useSearch(true);
  const isEmpty = modules.length === 0 && !isSearching && findings.length === 0;
  return (
    <>
      <Findings findings={findings} />
      <p class="count" role="status">
        {isSearching && modules.length === 0 ? texts.catalogue.searching : texts.catalogue.count(modules.length)}
      </p>
      {isEmpty && <p>{texts.catalogue.empty}</p>}
      {modules.length > 0 && <Results modules={modules} onAdd={onAdd} />}
    </>
  );
}

/** Search in the catalogue, and the mx files of the folder. */
export function CatalogueView({ start, onAdd }: { start: Start; onAdd: AddModule | undefined }) {
  const hasCatalogue = start.catalogue !== null;
  return (
    <section class="catalogue" aria-labelledby="catalogue-title">
      <h1 id="catalogue-title" tabIndex={-1}>{texts.catalogue.title}</h1>
      <div class="search">
        <Words />
        {hasCatalogue && <Conditions all={start.conditions} />}
      </div>
      {hasCatalogue ? <Found onAdd={onAdd} /> : <p>{texts.catalogue.noCatalogue}</p>}
      <Folder onAdd={onAdd} />
    </section>
  );
}
