import { useEffect, useState } from "preact/hooks";
import { Refusal, connection, isAborted } from "../api/client";
import type { Finding, Start } from "../api/types";
import { Findings } from "../parts/Findings";
import { useStore } from "../state/store";
import { texts } from "../texts";
import type { AddModule } from "./catalogue/Results";
import { OpenModule } from "./module/OpenModule";
import { sessionOf } from "./module/session";
import type { ModuleSession } from "./module/session";

interface Opening {
  session: ModuleSession | null;
  findings: readonly Finding[];
}

/** Opens the module, again after the server was lost. */
function useSession(reference: string): Opening {
  const [opening, setOpening] = useState<Opening>({ session: null, findings: [] });
  const state = useStore(connection);
  useEffect(() => {
    if (opening.session !== null || state !== "connected") return undefined;
    const ending = new AbortController();
    sessionOf(reference, ending.signal)
      .then((session) => setOpening({ session, findings: [] }))
      .catch((error: unknown) => {
        if (!isAborted(error)) setOpening({ session: null, findings: error instanceof Refusal ? error.findings : [] });
      });
    return () => ending.abort();
  }, [reference, state]);
  return opening;
}

export interface ModuleViewProps {
  /** As the API names modules; empty: the opened file. */
  reference: string;
  start: Start;
  onAdd: AddModule | undefined;
}

/** A module: its parameters and bytes, process image, channels, properties and file. */
export function ModuleView({ reference, start, onAdd }: ModuleViewProps) {
  const { session, findings } = useSession(reference);
  if (session !== null) return <OpenModule session={session} start={start} onAdd={onAdd} />;
  const name = reference === "" ? start.file ?? "" : reference;
  return (
    <section aria-busy={findings.length === 0}>
      <h1 tabIndex={-1}>{name}</h1>
      {findings.length === 0 ? <p class="faint">{texts.loading}</p> : <p>{texts.module.failed}</p>}
      <Findings findings={findings} />
    </section>
  );
}
