import { useEffect, useState } from "preact/hooks";
import { folderModules, searchCatalogue } from "../../api/calls";
import { Refusal, isAborted } from "../../api/client";
import type { Finding } from "../../api/types";
import { hasWords } from "../../state/words";

const delayMs = 120;
const mostShown = 200;

/** A module that can be added. */
export interface Candidate {
  reference: string;
  label: string;
}

export interface Candidates {
  files: readonly Candidate[];
  ofCatalogue: readonly Candidate[];
  findings: readonly Finding[];
}

const none: Candidates = { files: [], ofCatalogue: [], findings: [] };

async function inCatalogue(words: string, signal: AbortSignal): Promise<Omit<Candidates, "files">> {
  try {
    const { modules, findings } = await searchCatalogue(words, [], mostShown, null, signal);
    return { ofCatalogue: modules.filter((one) => one.hasContent), findings };
  } catch (error) {
    if (isAborted(error)) throw error;
    return { ofCatalogue: [], findings: error instanceof Refusal ? error.findings : [] };
  }
}

/** Returns the modules of the folder and of the catalogue that have the words. */
export function useCandidates(words: string, hasCatalogue: boolean): Candidates {
  const [folder, setFolder] = useState<readonly Candidate[]>([]);
  const [found, setFound] = useState<Omit<Candidates, "files">>(none);
  useEffect(() => {
    const ending = new AbortController();
    folderModules(ending.signal).then(({ modules }) => setFolder(modules)).catch(() => undefined);
    return () => ending.abort();
  }, []);
  useEffect(() => {
    if (!hasCatalogue) return undefined;
    const ending = new AbortController();
    const timer = setTimeout(() => inCatalogue(words, ending.signal).then(setFound).catch(() => undefined), delayMs);
    return () => {
      clearTimeout(timer);
      ending.abort();
    };
  }, [words, hasCatalogue]);
  return { ...found, files: folder.filter((one) => hasWords(words, one.reference, one.label)) };
}
