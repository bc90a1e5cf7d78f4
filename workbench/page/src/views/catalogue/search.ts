import { useEffect, useState } from "preact/hooks";
import { folderModules, searchCatalogue } from "../../api/calls";
import { Refusal, connection, isAborted } from "../../api/client";
import type { CatalogueModule, Finding, FolderModule } from "../../api/types";
import { Store, useStore } from "../../state/store";

const delayMs = 120;

/** What is searched for; kept while other views are shown. */
export interface Query {
  words: string;
  conditions: readonly string[];
}

export const query = new Store<Query>({ words: "", conditions: [] });

export interface Results {
  modules: readonly CatalogueModule[];
  findings: readonly Finding[];
  isSearching: boolean;
}

const none: Results = { modules: [], findings: [], isSearching: false };

/** Returns what the catalogue has for the query; an answer to an older query is dropped. */
export function useSearch(hasCatalogue: boolean): Results {
  const asked = useStore(query);
  const state = useStore(connection);
  const [results, setResults] = useState<Results>({ ...none, isSearching: hasCatalogue });
  useEffect(() => {
    if (!hasCatalogue || state !== "connected") return undefined;
    const ending = new AbortController();
    const search = (): void => {
      setResults((before) => ({ ...before, isSearching: true }));
      searchCatalogue(asked.words, [...asked.conditions], ending.signal)
        .then((found) => setResults({ ...found, isSearching: false }))
        .catch((error: unknown) => {
          if (isAborted(error)) return;
          const findings = error instanceof Refusal ? error.findings : [];
          setResults((before) => ({ ...before, findings, isSearching: false }));
        });
    };
    const timer = setTimeout(search, delayMs);
    return () => {
      clearTimeout(timer);
      ending.abort();
    };
  }, [asked, hasCatalogue, state]);
  return results;
}

/** Returns the mx files of the folder; null: not answered yet. */
export function useFolder(): readonly FolderModule[] | null {
  const [modules, setModules] = useState<readonly FolderModule[] | null>(null);
  const state = useStore(connection);
  useEffect(() => {
    if (state !== "connected") return undefined;
    const ending = new AbortController();
    folderModules(ending.signal).then((found) => setModules(found.modules)).catch(() => undefined);
    return () => ending.abort();
  }, [state]);
  return modules;
}
