import { start } from "../api/calls";
import { connection } from "../api/client";
import { useStore } from "../state/store";
import { texts } from "../texts";

function tryAgain(): void {
  start().catch(() => undefined);
}

/** Says that the server is lost, or that this page belongs to an earlier run of it. */
export function ServerState() {
  const state = useStore(connection);
  if (state === "connected") return <div role="alert" class="heard" />;
  const words = state === "lost" ? texts.connection.lostLong : texts.connection.earlierRunLong;
  return (
    <div role="alert" class="server-state">
      <p>{words}</p>
      {state === "lost" && <button type="button" onClick={tryAgain}>{texts.connection.retry}</button>}
    </div>
  );
}
