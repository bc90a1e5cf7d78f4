import { useEffect, useMemo } from "preact/hooks";
import type { StationAnswer } from "../api/stationTypes";
import type { Finding, Start } from "../api/types";
import { Findings } from "../parts/Findings";
import { additions } from "../state/additions";
import { useShared } from "../state/shared";
import { useStore } from "../state/store";
import { texts } from "../texts";
import { draft } from "./station/draft";
import { redo, undo } from "./station/planning";
import { Row } from "./station/Row";
import { RefusedAt } from "./station/RefusedAt";
import { addModule } from "./station/rowMoves";
import { rowOf } from "./station/rowPlaces";
import type { Row as RowModel } from "./station/rowPlaces";
import { saveFindings } from "./station/saving";
import { StationPanel } from "./station/StationPanel";
import { Toolbar } from "./station/Toolbar";
import { Totals } from "./station/Totals";
import { Yaml } from "./station/Yaml";
import { goTo } from "./station/yamlPlace";

const noFindings: readonly Finding[] = [];
const emptyRow: RowModel = { places: [], after: [] };

function showPlace(finding: Finding): void {
  if (finding.line !== null) goTo.set({ line: finding.line, column: finding.column, isFocused: true });
}

/** Returns the row of the newest answer; what did not change stays the same object. */
function useRow(answer: StationAnswer | null): RowModel {
  return useShared(useMemo(() => (answer === null ? emptyRow : rowOf(answer)), [answer?.entries, answer?.plan]));
}

/** Adds what other views asked for at the end of the row. */
function useAdditions(isAnswered: boolean): void {
  const wanted = useStore(additions);
  useEffect(() => {
    if (!isAnswered || wanted.length === 0) return;
    additions.set([]);
    const count = draft.get().answer?.entries.length ?? 0;
    wanted.forEach((one, index) => void addModule(one.reference, "", count + index, one.label));
  }, [wanted, isAnswered]);
}

/** Returns whether the keys take back what is typed in a field, not a change of the draft. */
function isOfTyping(target: EventTarget | null): boolean {
  return target instanceof HTMLInputElement && (target.type === "search" || "typed" in target.dataset || target.closest("dialog") !== null);
}

function onKey(event: KeyboardEvent): void {
  if (!(event.ctrlKey || event.metaKey) || event.altKey || isOfTyping(event.target)) return;
  const key = event.key.toLowerCase();
  if (key === "z" && !event.shiftKey) undo();
  else if (key === "y" || (key === "z" && event.shiftKey)) redo();
  else return;
  event.preventDefault();
}

function useKeys(): void {
  useEffect(() => {
    addEventListener("keydown", onKey);
    return () => removeEventListener("keydown", onKey);
  }, []);
}

function Problems({ findings }: { findings: readonly Finding[] }) {
  const saving = useStore(saveFindings);
  const errors = findings.filter((one) => one.severity === "error").length;
  return (
    <section class="problems" aria-labelledby="problems-title">
      <h2 id="problems-title">{texts.station.findings}</h2>
      <p class="faint" role="status">{texts.station.findingCount(errors, findings.length - errors)}</p>
      <Findings findings={saving} />
      <Findings findings={findings} onPlace={showPlace} />
    </section>
  );
}

/** The number of errors where it is in sight, and the way to the first of them. */
function FirstError({ findings }: { findings: readonly Finding[] }) {
  const errors = findings.filter((one) => one.severity === "error");
  const first = errors.find((one) => one.line !== null);
  if (first === undefined) return null;
  return <button type="button" class="link first-error" onClick={() => showPlace(first)}>{texts.station.firstError(errors.length)}</button>;
}

/** The station: its row, the selected entry, and the whole as text. */
export function StationView({ start }: { start: Start }) {
  const answer = useStore(draft, (value) => value.answer);
  const planned = useStore(draft, (value) => value.planned);
  const selectedIndex = useStore(draft, (value) => value.selected);
  useKeys();
  useAdditions(answer !== null);
  const row = useRow(answer);
  const selected = selectedIndex === null ? null : row.places[selectedIndex] ?? null;
  const title = planned?.plan?.station ?? start.file ?? texts.nav.station;
  const findings = answer?.findings ?? noFindings;
  return (
    <section class="station" aria-labelledby="station-title" aria-busy={answer === null}>
      <div class="station-head">
        <h1 id="station-title" tabIndex={-1}>{title}</h1>
        <Toolbar start={start} selected={selected} count={row.places.length} />
      </div>
      <RefusedAt source="" />
      <RefusedAt source="row" />
      {answer !== null && <Row row={row} />}
      {planned?.plan != null && <Totals plan={planned.plan} isOld={answer?.isPlanned === false} />}
      <div class="station-columns">
        <div class="station-parts"><StationPanel planned={planned} selected={selected} /></div>
        <section class="station-text" aria-labelledby="yaml-title">
          <div class="text-head">
            <h2 id="yaml-title">{texts.station.yaml.title}</h2>
            <FirstError findings={findings} />
          </div>
          <Yaml findings={findings} />
          <Problems findings={findings} />
        </section>
      </div>
    </section>
  );
}
