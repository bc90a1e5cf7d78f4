import { fileVersion, start } from "../api/calls";
import { connection } from "../api/client";
import { diskVersion } from "./status";

const periodMs = 2_000;
const retryMs = 1_000;

async function ask(hasFile: boolean): Promise<void> {
  if (hasFile) diskVersion.set((await fileVersion()).version);
  else await start();
}

/**
 * Asks the server regularly, so that a lost server or a file changed by another program is seen
 * without a call of a view. Returns the function that ends it.
 */
export function beat(hasFile: boolean): () => void {
  let timer = 0;
  let isEnded = false;
  const again = (): void => {
    const isLost = connection.get() === "lost";
    if (!isEnded) timer = setTimeout(once, isLost ? retryMs : periodMs);
  };
  const once = (): void => {
    if (document.hidden || connection.get() === "earlier-run") again();
    else ask(hasFile).catch(() => undefined).finally(again);
  };
  again();
  return () => {
    isEnded = true;
    clearTimeout(timer);
  };
}
