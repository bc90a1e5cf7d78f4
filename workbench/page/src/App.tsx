import { useEffect, useRef, useState } from "preact/hooks";
import { start as askStart } from "./api/calls";
import { Refusal, connection } from "./api/client";
import { token } from "./api/session";
import type { Finding, Start } from "./api/types";
import { Findings } from "./parts/Findings";
import { Header } from "./parts/Header";
import { Live } from "./parts/Live";
import { ServerState } from "./parts/ServerState";
import { Shortcuts } from "./parts/Shortcuts";
import { requestModule } from "./state/additions";
import { beat } from "./state/heartbeat";
import { address, useRoute } from "./state/route";
import type { Route } from "./state/route";
import { useStore } from "./state/store";
import { texts } from "./texts";
import { CatalogueView } from "./views/CatalogueView";
import { ModuleView } from "./views/ModuleView";
import { OnlineView } from "./views/OnlineView";
import { StationView } from "./views/StationView";
import { OnlineSession } from "./views/online/OnlineSession";
import { StationSession } from "./views/station/StationSession";

function firstRoute(start: Start): Route {
  if (start.opened === "module") return { view: "module", reference: "" };
  return { view: start.opened === "station" ? "station" : "catalogue" };
}

function addToStation(reference: string, label: string): void {
  requestModule({ reference, label });
  location.hash = address({ view: "station" });
}

function View({ route, start }: { route: Route; start: Start }) {
  const onAdd = start.opened === "module" ? undefined : addToStation;
  switch (route.view) {
    case "catalogue": return <CatalogueView start={start} onAdd={onAdd} />;
    case "module": return <ModuleView key={route.reference} reference={route.reference} start={start} onAdd={onAdd} />;
    case "station": return <StationView start={start} />;
    case "online": return <OnlineView start={start} />;
  }
}

function nameOf(route: Route, start: Start): string {
  if (route.view !== "module") return texts.nav[route.view];
  return route.reference === "" ? start.file ?? texts.nav.openedModule : route.reference;
}

/** Asks for the start until the server answers it. */
function useStart(): { start: Start | null; findings: Finding[] } {
  const [start, setStart] = useState<Start | null>(null);
  const [findings, setFindings] = useState<Finding[]>([]);
  const state = useStore(connection);
  useEffect(() => {
    if (start !== null || state !== "connected") return;
    if (token() === null) connection.set("earlier-run");
    else {
      askStart().then(setStart).catch((error: unknown) => {
        if (error instanceof Refusal) setFindings(error.findings);
      });
    }
  }, [state]);
  return { start, findings };
}

/** Moves the focus to the heading of a view that was opened by a link, and names it in the title. */
function useArrival(route: Route | null, start: Start | null): void {
  const isFirst = useRef(true);
  useEffect(() => {
    if (start === null) return;
    if (!isFirst.current) document.querySelector<HTMLElement>("main h1")?.focus();
    isFirst.current = false;
    if (route !== null) document.title = texts.title(nameOf(route, start));
  }, [route?.view, route?.view === "module" ? route.reference : "", start]);
}

export function App() {
  const { start, findings } = useStart();
  const chosen = useRoute();
  const route = chosen ?? (start === null ? null : firstRoute(start));
  useArrival(route, start);
  useEffect(() => beat(start?.opened === "station"), [start]);
  return (
    <>
      <button type="button" class="skip" onClick={() => document.querySelector<HTMLElement>("main")?.focus()}>
        {texts.skip}
      </button>
      <Header start={start} route={route} />
      <ServerState />
      {start !== null && start.opened !== "module" && <StationSession start={start} />}
      {start !== null && start.target !== null && <OnlineSession />}
      <main tabIndex={-1} aria-busy={start === null}>
        {start === null && <h1 class="heard">{texts.brand}</h1>}
        <Findings findings={findings} />
        {start !== null && route !== null && <View route={route} start={start} />}
      </main>
      <Live />
      <Shortcuts />
    </>
  );
}
