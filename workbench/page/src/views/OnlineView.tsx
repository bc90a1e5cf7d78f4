import type { Start } from "../api/types";
import { texts } from "../texts";

export function OnlineView({ start }: { start: Start }) {
  return (
    <section>
      <h1 tabIndex={-1}>{texts.nav.online}</h1>
      <p>{start.target}</p>
    </section>
  );
}
