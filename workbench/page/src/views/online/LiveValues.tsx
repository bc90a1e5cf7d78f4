import { useEffect, useState } from "preact/hooks";
import { connection } from "../../api/client";
import type { LiveValue, OnlineLive } from "../../api/onlineTypes";
import { Findings } from "../../parts/Findings";
import { Moment } from "../../parts/Moment";
import { memo } from "../../parts/memo";
import { useStore } from "../../state/store";
import { texts } from "../../texts";
import { draft } from "../station/draft";
import { isOwnWatch, ownWatch } from "./ownWatch";
import { online, sampledAt, stopWatch, watch } from "./session";
import { WatchChoice } from "./WatchChoice";

const words = texts.online.live;
const staleMs = 3_000;
const checkMs = 500;

/** Returns whether the newest sample is too old to be called live. */
function useStale(): boolean {
  const at = useStore(sampledAt);
  const state = useStore(connection);
  const [now, setNow] = useState(0);
  useEffect(() => {
    const timer = setInterval(() => setNow(performance.now()), checkMs);
    return () => clearInterval(timer);
  }, []);
  return state !== "connected" || now - at > staleMs;
}

const Value = memo(function Value({ value }: { value: LiveValue }) {
  const { columns } = words;
  return (
    <tr class={value.isChanged ? "changed-value" : ""}>
      <td data-label={columns.module}>{value.module} {value.moduleName}</td>
      <th scope="row" data-label={columns.channel}>{value.alias === "" ? value.channel : `${value.alias} (${value.channel})`}</th>
      <td class="mono" data-label={columns.symbol}>{value.symbol}</td>
      <td class="number value" data-label={columns.value}>
        {value.isChanged && <span class="changed-mark"><span aria-hidden="true">● </span><span class="heard">{words.changed}</span></span>}
        {value.text}
      </td>
      <td class="mono" data-label={columns.hex}>{value.hex}</td>
    </tr>
  );
});

function Values({ live }: { live: OnlineLive }) {
  const isStale = useStale();
  const isOwn = useStore(ownWatch, (own) => isOwnWatch(own, live.id));
  const version = useStore(draft, (value) => value.answer?.version ?? "");
  const { columns } = words;
  return (
    <>
      <p class={isStale ? "stale-values" : "faint"}>
        {isStale && `${words.stale} `}
        {live.time === "" ? words.noSample : <>{words.at} <Moment time={live.time} /></>}
      </p>
      {!isOwn && <p class="stale-values">{words.ofOther}</p>}
      {live.version !== version && <p class="stale-values">{words.otherText}</p>}
      <Findings findings={live.findings} />
      {live.values.length > 0 && (
        <table class={`stacked box live${isStale ? " is-stale" : ""}`}>
          <caption class="heard">{words.title}</caption>
          <thead>
            <tr>
              <th scope="col">{columns.module}</th>
              <th scope="col">{columns.channel}</th>
              <th scope="col">{columns.symbol}</th>
              <th scope="col" class="number">{columns.value}</th>
              <th scope="col">{columns.hex}</th>
            </tr>
          </thead>
          <tbody>{live.values.map((value) => <Value key={value.name} value={value} />)}</tbody>
        </table>
      )}
    </>
  );
}

/** The values of channels, read again and again while the page is open. */
export function LiveValues() {
  const live = useStore(online, (value) => value?.live ?? null);
  const [chosen, setChosen] = useState<readonly string[]>([]);
  return (
    <section class="live-values" aria-labelledby="live-title">
      <h2 id="live-title">{words.title}</h2>
      <div class="tools">
        <WatchChoice chosen={chosen} onChange={setChosen} />
        <button type="button" onClick={() => void watch(chosen)}>{live === null ? words.start : words.restart}</button>
        {live !== null && <button type="button" onClick={() => void stopWatch()}>{words.stop}</button>}
      </div>
      {live !== null && <Values live={live} />}
    </section>
  );
}
