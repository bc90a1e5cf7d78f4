import { useState } from "preact/hooks";
import type { OnlinePlan, OnlineState } from "../../api/onlineTypes";
import { connection } from "../../api/client";
import { Findings } from "../../parts/Findings";
import { useStore } from "../../state/store";
import { texts } from "../../texts";
import { base, draft } from "../station/draft";
import { ApplyDialog } from "./ApplyDialog";
import { Differences } from "./Differences";
import { plan as makePlan, verify } from "./session";

const words = texts.online;

/** Returns why the plan cannot be applied; empty: it can. */
function hindrance(shown: OnlinePlan | null, isSaved: boolean, savedVersion: string | null): string {
  if (shown === null || !shown.isPlan) return words.apply.noPlan;
  if (!isSaved) return words.apply.notSaved;
  if (shown.version !== savedVersion) return words.apply.otherPlan;
  if (shown.identityErrors.length > 0) return words.apply.otherModules;
  return shown.difference.writes.registers === 0 ? words.apply.nothing : "";
}

function useHindrance(state: OnlineState | null): string {
  const from = useStore(base);
  const isSaved = useStore(draft, (value) => value.text === from?.text);
  const isReached = useStore(connection) === "connected";
  if (!isReached) return texts.connection.lost;
  if (state?.work != null) return words.working;
  return hindrance(state?.plan ?? null, isSaved, from?.version ?? null);
}

function Work({ work }: { work: OnlineState["work"] }) {
  if (work === null) return null;
  const { kind, done, total } = work;
  return (
    <div class="work">
      <label for="work-progress">{words.works[kind]}</label>
      <progress id="work-progress" {...(total > 0 ? { max: total, value: done } : {})} />
      {total > 0 && <span class="faint">{words.progress(done, total)}</span>}
    </div>
  );
}

function Shown({ shown }: { shown: OnlinePlan }) {
  const version = useStore(draft, (value) => value.answer?.version ?? "");
  return (
    <>
      <h3>{shown.isPlan ? words.planOf(shown.difference.station) : words.verified(shown.difference.station)}</h3>
      {shown.version !== version && <p class="stale-values">{words.otherText}</p>}
      <Findings findings={shown.identityErrors} />
      <Differences difference={shown.difference} />
    </>
  );
}

/** Comparing the coupler with the station, and writing what differs. */
export function PlanPanel({ state }: { state: OnlineState | null }) {
  const [isAsking, setAsking] = useState(false);
  const reason = useHindrance(state);
  const isBusy = state?.work != null;
  const shown = state?.plan ?? null;
  const start = (work: () => Promise<boolean>) => (): void => {
    if (!isBusy) void work();
  };
  return (
    <section class="compare" aria-labelledby="compare-title">
      <h2 id="compare-title">{words.parameters}</h2>
      <p class="faint">{words.steps}</p>
      <div class="tools">
        <button type="button" aria-disabled={isBusy} onClick={start(makePlan)}>{words.plan}</button>
        <button type="button" aria-disabled={isBusy} onClick={start(verify)}>{words.verify}</button>
        <button
          type="button"
          class="primary"
          aria-disabled={reason !== ""}
          aria-describedby="apply-reason"
          onClick={() => reason === "" && setAsking(true)}
        >{words.apply.open}</button>
        <span id="apply-reason" class="faint">{reason}</span>
      </div>
      <Work work={state?.work ?? null} />
      {shown !== null && <Shown shown={shown} />}
      {isAsking && shown !== null && <ApplyDialog plan={shown} onClose={() => setAsking(false)} />}
    </section>
  );
}
