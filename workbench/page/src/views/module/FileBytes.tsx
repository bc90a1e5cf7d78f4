import { useEffect, useMemo, useState } from "preact/hooks";
import { explanation } from "../../api/calls";
import { Refusal, connection, isAborted } from "../../api/client";
import type { ExplainGroup, Explanation, Finding } from "../../api/types";
import { Findings } from "../../parts/Findings";
import { useRoving } from "../../parts/roving";
import { useStore } from "../../state/store";
import { texts } from "../../texts";
import { FilePage } from "./FilePage";
import { ExplainedFile } from "./explained";

const pageSize = 512;

function useExplanation(reference: string): { file: ExplainedFile | null; findings: readonly Finding[] } {
  const [answer, setAnswer] = useState<Explanation | null>(null);
  const [findings, setFindings] = useState<readonly Finding[]>([]);
  const state = useStore(connection);
  useEffect(() => {
    if (answer !== null || state !== "connected") return undefined;
    const ending = new AbortController();
    explanation(reference, ending.signal).then(setAnswer).catch((error: unknown) => {
      if (!isAborted(error) && error instanceof Refusal) setFindings(error.findings);
    });
    return () => ending.abort();
  }, [reference, state]);
  const file = useMemo(() => (answer === null ? null : new ExplainedFile(answer)), [answer]);
  return { file, findings };
}

function groupName(group: ExplainGroup): string {
  return group.name === "" ? texts.file.unknown : group.name;
}

function Groups({ groups, offset, onChoose }: { groups: readonly ExplainGroup[]; offset: number; onChoose(offset: number): void }) {
  const roving = useRoving(groups.length);
  const { group, name, length, groups: title } = texts.file;
  return (
    <table class="file-groups" onKeyDown={roving.onKeyDown} onFocusIn={roving.onFocusIn}>
      <caption class="heard">{title}</caption>
      <thead>
        <tr>
          <th scope="col">{group}</th><th scope="col">{name}</th>
          <th scope="col" class="number">{texts.file.offset}</th><th scope="col" class="number">{length}</th>
        </tr>
      </thead>
      <tbody>
        {groups.map((one, index) => {
          const isChosen = offset >= one.offset && offset < one.offset + one.length;
          return (
            <tr key={one.offset} data-item={index} class={isChosen ? "chosen" : ""}>
              <td class="mono">{one.id}</td>
              <th scope="row">
                <button
                  type="button"
                  class="link"
                  tabIndex={index === roving.current ? 0 : -1}
                  aria-current={isChosen ? "true" : undefined}
                  onClick={() => onChoose(one.offset)}
                >{groupName(one)}</button>
              </th>
              <td class="number">{one.offset}</td>
              <td class="number">{one.length}</td>
            </tr>
          );
        })}
      </tbody>
    </table>
  );
}

/** The bytes of the mx file and what each means: the groups, and a page of bytes from one of them on. */
export function FileBytes({ reference }: { reference: string }) {
  const { file, findings } = useExplanation(reference);
  const [offset, setOffset] = useState(0);
  if (findings.length > 0) return <Findings findings={findings} />;
  if (file === null) return <p class="faint">{texts.loading}</p>;
  const { groups, failure } = file.explanation;
  return (
    <div class="file">
      {failure !== null && <p class="stale">{texts.file.failure}: {failure}</p>}
      <div class="box scrolls file-list"><Groups groups={groups} offset={offset} onChoose={setOffset} /></div>
      <FilePage file={file} offset={offset} size={pageSize} onOffset={setOffset} />
    </div>
  );
}
