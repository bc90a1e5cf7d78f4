import type { Start } from "../api/types";
import { connection } from "../api/client";
import { Findings } from "../parts/Findings";
import { useStore } from "../state/store";
import { texts } from "../texts";
import { LiveValues } from "./online/LiveValues";
import { PlanPanel } from "./online/PlanPanel";
import { Report } from "./online/Report";
import { online, refusedRequest } from "./online/session";

const words = texts.online;

function ConnectionState({ target }: { target: string }) {
  const state = useStore(online);
  const server = useStore(connection);
  const known = server === "connected" ? words.connections[state?.connection ?? "none"] : words.serverLost;
  return (
    <dl class="totals">
      <div><dt>{words.target}</dt><dd class="mono">{target}</dd></div>
      <div><dt>{words.connection}</dt><dd><span role="status">{known}</span></dd></div>
      <div><dt>{words.traffic}</dt><dd>{state?.traffic ?? texts.nothing}</dd></div>
    </dl>
  );
}

/** The coupler: its parameters compared with the station and written, and its live values. */
export function OnlineView({ start }: { start: Start }) {
  const state = useStore(online);
  const refused = useStore(refusedRequest);
  return (
    <section class="online" aria-labelledby="online-title">
      <h1 id="online-title" tabIndex={-1}>{words.title}</h1>
      <ConnectionState target={state?.target ?? start.target ?? ""} />
      <Findings findings={refused} />
      <Findings findings={state?.findings ?? []} />
      <PlanPanel state={state} />
      {state !== null && state.report !== null && <Report report={state.report} />}
      <LiveValues />
    </section>
  );
}
