import { useEffect, useMemo, useRef } from "preact/hooks";
import type { Finding } from "../../api/types";
import { useStore } from "../../state/store";
import { texts } from "../../texts";
import { draft } from "./draft";
import type { Draft } from "./draft";
import { shownLines, withTyped } from "./lineEnds";
import { select, type } from "./planning";
import { goTo } from "./yamlPlace";
import type { YamlTarget } from "./yamlPlace";

const words = texts.station.yaml;

/** Lines that findings name, with the severest of each. */
function markedLines(findings: readonly Finding[]): ReadonlyMap<number, Finding> {
  const marks = new Map<number, Finding>();
  for (const finding of findings) {
    if (finding.line === null) continue;
    const known = marks.get(finding.line);
    if (known === undefined || (finding.severity === "error" && known.severity !== "error")) {
      marks.set(finding.line, finding);
    }
  }
  return marks;
}

/** The numbers of the lines; those with a finding are marked. One text between two marks. */
function Gutter({ count, marks }: { count: number; marks: ReadonlyMap<number, Finding> }) {
  const parts = [];
  let plain = "";
  for (let line = 1; line <= count; ++line) {
    const mark = marks.get(line);
    if (mark === undefined) plain += `${line}\n`;
    else {
      parts.push(plain, <span key={line} class={`marked ${mark.severity}`} title={mark.text}>{line}</span>);
      plain = "";
    }
  }
  return <pre class="yaml-gutter" aria-hidden="true">{parts}{plain}</pre>;
}

/** Returns whether a line before the next entry is empty or a comment, which tells of that entry. */
function isBetweenEntries(line: string): boolean {
  return /^\s*(#|$)/.test(line);
}

/** First and last line of the selected entry; null: none is selected. */
function selectedLines(value: Draft): string | null {
  const { answer, selected, text } = value;
  if (answer === null || selected === null || answer.text !== text) return null;
  const entry = answer.entries[selected];
  if (entry === undefined) return null;
  const lines = shownLines(text).split("\n");
  let last = (answer.entries[selected + 1]?.line ?? lines.length + 1) - 1;
  while (last > entry.line && isBetweenEntries(lines[last - 1] ?? "")) --last;
  return `${entry.line} ${Math.max(entry.line, last)}`;
}

function SelectedLines({ lines }: { lines: string | null }) {
  if (lines === null) return null;
  const [first, last] = lines.split(" ").map(Number) as [number, number];
  const style = { "--first": String(first - 1), "--count": String(last - first + 1) };
  return <div class="yaml-selected" style={style} aria-hidden="true" />;
}

function lineAt(text: string, place: number): number {
  let line = 1;
  for (let at = text.indexOf("\n"); at >= 0 && at < place; at = text.indexOf("\n", at + 1)) ++line;
  return line;
}

function selectEntryAt(field: HTMLTextAreaElement): void {
  const { answer, text } = draft.get();
  if (answer === null || answer.text !== text) return;
  const line = lineAt(field.value, field.selectionStart);
  const found = answer.entries.filter((entry) => entry.line <= line).at(-1);
  if (found !== undefined) select(found.index);
}

/** Shows a place in the text when a finding or an entry was chosen elsewhere. */
function useTarget(field: { current: HTMLTextAreaElement | null }): void {
  const show = (target: YamlTarget): void => {
    const area = field.current;
    if (area === null) return;
    const height = parseFloat(getComputedStyle(area).lineHeight);
    const top = (target.line - 1) * height;
    const scroller = area.closest<HTMLElement>(".yaml-scroll");
    if (scroller !== null && (top < scroller.scrollTop || top > scroller.scrollTop + scroller.clientHeight - 2 * height)) {
      scroller.scrollTop = top - scroller.clientHeight / 3;
    }
    if (!target.isFocused) return;
    const lines = area.value.split("\n");
    const start = lines.slice(0, target.line - 1).reduce((sum, line) => sum + line.length + 1, 0);
    area.focus({ preventScroll: true });
    area.setSelectionRange(start + (target.column ?? 1) - 1, start + (lines[target.line - 1]?.length ?? 0));
  };
  useEffect(() => goTo.watch(() => {
    const target = goTo.get();
    if (target !== null) show(target);
  }), []);
}

function useSelectedInSight(lines: string | null): void {
  const isFirst = useRef(true);
  useEffect(() => {
    const first = Number(lines?.split(" ")[0] ?? "0");
    const isOwn = document.activeElement instanceof HTMLTextAreaElement;
    if (first > 0 && !isOwn && !isFirst.current) goTo.set({ line: first, column: null, isFocused: false });
    isFirst.current = false;
  }, [lines]);
}

/** The text of the station. What is typed is planned after a short pause. */
export function Yaml({ findings }: { findings: readonly Finding[] }) {
  const field = useRef<HTMLTextAreaElement>(null);
  const text = useStore(draft, (value) => value.text);
  const selected = useStore(draft, selectedLines);
  const shown = useMemo(() => shownLines(text), [text]);
  const lines = useMemo(() => shown.split("\n"), [shown]);
  const widest = useMemo(() => lines.reduce((most, line) => Math.max(most, line.length), 0), [lines]);
  const marks = useMemo(() => markedLines(findings), [findings]);
  useTarget(field);
  useSelectedInSight(selected);
  return (
    <div class="yaml-scroll">
      <div class="yaml" style={{ "--lines": String(lines.length), "--widest": String(widest) }}>
        <Gutter count={lines.length} marks={marks} />
        <SelectedLines lines={selected} />
        <textarea
          ref={field}
          aria-label={words.label}
          spellcheck={false}
          autoComplete="off"
          autoCapitalize="off"
          value={shown}
          onInput={(event) => type(withTyped(draft.get().text, event.currentTarget.value))}
          onClick={(event) => selectEntryAt(event.currentTarget)}
          onKeyUp={(event) => event.key.startsWith("Arrow") && selectEntryAt(event.currentTarget)}
        />
      </div>
    </div>
  );
}
