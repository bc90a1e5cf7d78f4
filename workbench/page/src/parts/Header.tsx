import { connection } from "../api/client";
import type { Start } from "../api/types";
import { openHelp } from "../state/help";
import { address } from "../state/route";
import type { Route } from "../state/route";
import { saveState, targetState } from "../state/status";
import { useStore } from "../state/store";
import { setTheme, theme } from "../state/theme";
import type { Theme } from "../state/theme";
import { texts } from "../texts";

function links(start: Start): { route: Route; text: string }[] {
  const all: { route: Route; text: string }[] = [];
  if (start.opened === "module") all.push({ route: { view: "module", reference: "" }, text: texts.nav.openedModule });
  all.push({ route: { view: "catalogue" }, text: texts.nav.catalogue });
  if (start.opened !== "module") all.push({ route: { view: "station" }, text: texts.nav.station });
  if (start.target !== null) all.push({ route: { view: "online" }, text: texts.nav.online });
  return all;
}

function isCurrent(link: Route, route: Route | null): boolean {
  if (link.view !== route?.view) return false;
  return link.view !== "module" || route.view !== "module" || link.reference === route.reference;
}

function Navigation({ start, route }: { start: Start; route: Route | null }) {
  return (
    <nav aria-label={texts.nav.label}>
      <ul>
        {links(start).map((link) => (
          <li key={link.text}>
            <a href={address(link.route)} aria-current={isCurrent(link.route, route) ? "page" : undefined}>{link.text}</a>
          </li>
        ))}
      </ul>
    </nav>
  );
}

function FileState({ start }: { start: Start }) {
  const saved = useStore(saveState);
  return (
    <p class="file-state">
      <span class="file-name">{start.file ?? texts.header.noFile}</span>
      {saved !== "none" && <span class={`badge save-${saved}`}>{texts.header.save[saved]}</span>}
    </p>
  );
}

function ServerBadge() {
  const state = useStore(connection);
  return <span class={`badge server-${state}`}>{texts.connection.short[state]}</span>;
}

function TargetBadge({ target }: { target: string }) {
  const state = useStore(targetState);
  return <span class={`badge target-${state}`} title={target}>{texts.header.target[state]}</span>;
}

function ThemeSwitch() {
  const chosen = useStore(theme);
  return (
    <select
      class="theme"
      aria-label={texts.header.theme}
      value={chosen}
      onChange={(event) => setTheme(event.currentTarget.value as Theme)}
    >
      {(["system", "light", "dark"] as const).map((one) => (
        <option key={one} value={one}>{texts.header.themes[one]}</option>
      ))}
    </select>
  );
}

/** Name of the file, state of it and of the connections, and the links to the views. */
export function Header({ start, route }: { start: Start | null; route: Route | null }) {
  return (
    <header class="page-header">
      <span class="brand">{texts.brand}</span>
      {start !== null && <FileState start={start} />}
      {start !== null && <Navigation start={start} route={route} />}
      <div class="header-end">
        {start !== null && start.target !== null && <TargetBadge target={start.target} />}
        <ServerBadge />
        <ThemeSwitch />
        <button type="button" class="quiet" aria-label={texts.help.open} title={texts.help.open} onClick={openHelp}>?</button>
      </div>
    </header>
  );
}
