import { useEffect, useRef, useState } from "preact/hooks";
import { folderModules, searchCatalogue } from "../../api/calls";
import { Refusal, connection, isAborted } from "../../api/client";
import type { CatalogueModule, Finding, FolderModule } from "../../api/types";
import { Store, useStore } from "../../state/store";

const delayMs = 120;
const pageSize = 50;

/** What is searched for; kept while other views are shown. */
export interface Query {
  words: string;
  conditions: readonly string[];
}

export const query = new Store<Query>({ words: "", conditions: [] });

export interface Results {
  modules: readonly CatalogueModule[];
  hasMore: boolean;
  findings: readonly Finding[];
  isSearching: boolean;
  /** What the modules were found for. */
  of: Query | null;
}

const none: Results = { modules: [], hasMore: false, findings: [], isSearching: false, of: null };

type Change = (change: (before: Results) => Results) => void;

/** Asks for the modules after `shown`, which are those found so far, and adds them. */
function load(asked: Query, shown: readonly CatalogueModule[], signal: AbortSignal, setResults: Change): void {
  setResults((before) => ({ ...before, isSearching: true }));
  searchCatalogue(asked.words, asked.conditions, pageSize, shown.at(-1) ?? null, signal)
    .then((page) => setResults(() => ({ ...page, modules: [...shown, ...page.modules], isSearching: false, of: asked })))
    .catch((error: unknown) => {
      if (isAborted(error)) return;
      const findings = error instanceof Refusal ? error.findings : [];
      setResults((before) => ({ ...before, findings, isSearching: false }));
    });
}

/** Returns the first modules for the query, and what loads more; an answer to an older query is dropped. */
export function useSearch(hasCatalogue: boolean): [Results, () => void] {
  const asked = useStore(query);
  const state = useStore(connection);
  const [results, setResults] = useState<Results>({ ...none, isSearching: hasCatalogue });
  const ofQuery = useRef(new AbortController());
  useEffect(() => {
    if (!hasCatalogue || state !== "connected") return undefined;
    const ending = new AbortController();
    ofQuery.current = ending;
    const timer = setTimeout(() => load(asked, [], ending.signal, setResults), delayMs);
    return () => {
      clearTimeout(timer);
      ending.abort();
    };
  }, [asked, hasCatalogue, state]);
  const more = (): void => {
    if (!results.isSearching && results.of === asked) load(asked, results.modules, ofQuery.current.signal, setResults);
  };
  return [results, more];
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
