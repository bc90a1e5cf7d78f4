import { useEffect, useState } from "preact/hooks";
import { Dialog } from "../../parts/Dialog";
import { give } from "../../parts/download";
import { useStore } from "../../state/store";
import { texts } from "../../texts";
import { base, draft, isChanged } from "./draft";
import type { Base } from "./draft";
import { differingLines, nearDifferences } from "./differingLines";
import type { ComparedLine } from "./differingLines";
import { keepMine, takeTheirs, theirs } from "./saving";

const linesAround = 2;
const signs = { same: " ", removed: "−", added: "+" } as const;

function Line({ line }: { line: ComparedLine | null }) {
  if (line === null) return <li class="skipped">{texts.station.file.leftOut}</li>;
  const { file } = texts.station;
  const heard = line.kind === "same" ? "" : line.kind === "removed" ? file.onlyMine : file.onlyTheirs;
  return (
    <li class={`compared ${line.kind}`}>
      <span aria-hidden="true">{signs[line.kind]}</span>
      {heard !== "" && <span class="heard">{heard}</span>}
      <code>{line.text}</code>
    </li>
  );
}

function Comparison({ mine, other }: { mine: string; other: string }) {
  const lines = nearDifferences(differingLines(mine, other), linesAround);
  return (
    <div class="comparison" tabIndex={0} role="region" aria-label={texts.station.file.differences}>
      <ul>{lines.map((line, index) => <Line key={index} line={line} />)}</ul>
    </div>
  );
}

function Choice({ other, file, onClose }: { other: Base; file: string; onClose(): void }) {
  const mine = useStore(draft, (value) => value.text);
  const words = texts.station.file;
  const and = (action: () => void) => (): void => {
    action();
    onClose();
  };
  return (
    <Dialog
      title={words.title(file)}
      onClose={onClose}
      actions={
        <>
          <button type="button" onClick={() => give({ name: file, content: new Blob([mine]) })}>{words.download}</button>
          <button type="button" onClick={and(() => void keepMine())}>{words.keepMine}</button>
          <button type="button" onClick={and(takeTheirs)}>{words.takeTheirs}</button>
        </>
      }
    >
      <p>{words.explained}</p>
      <p class="comparison-legend">{words.legend}</p>
      <Comparison mine={mine} other={other.text} />
    </Dialog>
  );
}

/** Says that another program changed the file, and asks what to do; nothing is overwritten unasked. */
export function FileChanged({ file }: { file: string }) {
  const other = useStore(theirs);
  useStore(draft, (value) => value.text !== base.get()?.text);
  const [isAsking, setAsking] = useState(false);
  useEffect(() => setAsking(other !== null && isChanged()), [other]);
  if (other === null) return null;
  const words = texts.station.file;
  const hasOwn = isChanged();
  return (
    <>
      <div role="alert" class="server-state file-changed">
        <p>{words.changed(file)} {hasOwn ? words.hasOwn : ""}</p>
        {hasOwn
          ? <button type="button" onClick={() => setAsking(true)}>{words.compare}</button>
          : <button type="button" onClick={takeTheirs}>{words.load}</button>}
      </div>
      {isAsking && <Choice other={other} file={file} onClose={() => setAsking(false)} />}
    </>
  );
}
