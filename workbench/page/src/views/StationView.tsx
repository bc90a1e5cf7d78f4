import type { Start } from "../api/types";
import { texts } from "../texts";

export function StationView({ start }: { start: Start }) {
  return (
    <section>
      <h1 tabIndex={-1}>{texts.nav.station}</h1>
      <p>{start.file}</p>
    </section>
  );
}
