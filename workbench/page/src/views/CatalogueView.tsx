import { useId } from "preact/hooks";
import type { Start } from "../api/types";
import { Findings } from "../parts/Findings";
import { useStore } from "../state/store";
import { texts } from "../texts";
import { Conditions } from "./catalogue/Conditions";
import { FirstSteps } from "./catalogue/FirstSteps";
import { Folder } from "./catalogue/Folder";
import { Results } from "./catalogue/Results";
import type { AddModule } from "./catalogue/Results";
import { query, useFolder, useSearch } from "./catalogue/search";

function Words({ hint }: { hint: string }) {
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
        placeholder={hint}
        value={words}
        onInput={(event) => query.set({ ...query.get(), words: event.currentTarget.value })}
      />
    </div>
  );
}

function Found({ onAdd }: { onAdd: AddModule | undefined }) {
  const [{ modules, hasMore, findings, isSearching }, more] = useSearch(true);
  const isEmpty = modules.length === 0 && !isSearching && findings.length === 0;
  return (
    <>
      <Findings findings={findings} />
      <p class="count" role="status">
        {isSearching && modules.length === 0 ? texts.catalogue.searching : texts.catalogue.found(modules.length, hasMore)}
      </p>
      {isEmpty && <p>{texts.catalogue.empty}</p>}
      {modules.length > 0 && <Results modules={modules} onMore={hasMore ? more : undefined} onAdd={onAdd} />}
    </>
  );
}

/** Search in the catalogue, and the mx files of the folder. */
export function CatalogueView({ start, onAdd }: { start: Start; onAdd: AddModule | undefined }) {
  const hasCatalogue = start.catalogue !== null;
  const files = useFolder();
  const hasFiles = files !== null && files.length > 0;
  const isNothingOpened = start.opened === "nothing" && files !== null;
  return (
    <section class="catalogue" aria-labelledby="catalogue-title">
      <h1 id="catalogue-title" tabIndex={-1}>{texts.catalogue.title}</h1>
      {isNothingOpened && <FirstSteps hasCatalogue={hasCatalogue} hasFiles={hasFiles} />}
      {(hasCatalogue || hasFiles) && (
        <div class="search">
          <Words hint={hasCatalogue ? texts.catalogue.wordsHint : texts.catalogue.filesHint} />
          {hasCatalogue && <Conditions all={start.conditions} />}
        </div>
      )}
      {hasCatalogue && <Found onAdd={onAdd} />}
      {!hasCatalogue && start.opened !== "nothing" && <p>{texts.catalogue.noCatalogue}</p>}
      {hasFiles && <Folder all={files} onAdd={onAdd} />}
    </section>
  );
}
