import type { Finding } from "../api/types";
import { texts } from "../texts";

export interface FindingsProps {
  findings: readonly Finding[];
  /** Whether the place of each is shown; false where the list is at its place. */
  hasPlaces?: boolean | undefined;
  /** Called with an accepted text that was chosen; without it they are shown as text. */
  onAccept?: ((text: string) => void) | undefined;
  /** Called with a finding whose place in a text was chosen. */
  onPlace?: ((finding: Finding) => void) | undefined;
}

function Accepted({ accepted, onAccept }: { accepted: readonly string[]; onAccept: FindingsProps["onAccept"] }) {
  if (accepted.length === 0) return null;
  return (
    <div class="accepted">
      <span>{texts.findings.accepted}</span>
      {accepted.map((text) =>
        onAccept === undefined
          ? <span key={text} class="accepted-text">{text}</span>
          : <button key={text} type="button" class="small" onClick={() => onAccept(text)}>{text}</button>)}
    </div>
  );
}

function Place({ finding, onPlace }: { finding: Finding; onPlace: FindingsProps["onPlace"] }) {
  if (finding.place === "") return null;
  if (onPlace === undefined || finding.line === null) return <span class="place">{finding.place}</span>;
  return <button type="button" class="place link" onClick={() => onPlace(finding)}>{finding.place}</button>;
}

function One({ finding, hasPlaces, onAccept, onPlace }: { finding: Finding } & Omit<FindingsProps, "findings">) {
  return (
    <li class={`finding ${finding.severity}`}>
      <span class="severity">{texts.findings.severity[finding.severity]}</span>
      <div class="finding-body">
        {hasPlaces !== false && <Place finding={finding} onPlace={onPlace} />}
        <span class="finding-text">{finding.text}</span>
        {finding.hint !== "" && <span class="hint">{finding.hint}</span>}
        {finding.excerpt !== "" && <pre class="excerpt">{finding.excerpt}</pre>}
        <Accepted accepted={finding.accepted} onAccept={onAccept} />
      </div>
    </li>
  );
}

/** Findings as a list; nothing if there are none. */
export function Findings({ findings, hasPlaces, onAccept, onPlace }: FindingsProps) {
  if (findings.length === 0) return null;
  return (
    <ul class="findings">
      {findings.map((finding, index) =>
        <One key={index} finding={finding} hasPlaces={hasPlaces} onAccept={onAccept} onPlace={onPlace} />)}
    </ul>
  );
}
