import { useMemo } from "preact/hooks";
import type { StationChannel, StationChannels, StationPlan } from "../../api/stationTypes";
import { memo } from "../../parts/memo";
import { useRoving } from "../../parts/roving";
import { texts } from "../../texts";
import type { Segment } from "../module/imageRows";
import { selectPosition } from "./planning";
import { bandsOf } from "./stationImage";
import type { Band } from "./stationImage";

const words = texts.station.images;
const bitNumbers = [7, 6, 5, 4, 3, 2, 1, 0] as const;

type Show = (key: string) => void;

function classOf({ channels }: Segment): string {
  if (channels.length === 0) return "free";
  return channels.length > 1 ? "overlap" : channels[0]?.direction ?? "";
}

function channelName(channel: StationChannel): string {
  if (channel.alias !== "") return channel.alias;
  return channel.name === "" ? texts.parameters.channel(channel.number, "") : channel.name;
}

function Held({ segment, reason, item, isReached, onShow }: {
  segment: Segment;
  reason: string;
  item: number;
  isReached: boolean;
  onShow: Show;
}) {
  const span = { colSpan: segment.bits, rowSpan: segment.rows, class: classOf(segment) };
  const channels = segment.channels as readonly StationChannel[];
  const [first] = channels;
  if (first === undefined) return <td {...span}>{segment.bits === 8 ? reason : <span class="heard">{reason}</span>}</td>;
  const names = channels.map(channelName).join(", ");
  const title = channels.length > 1 ? texts.image.overlap(names) : `${first.module_name}: ${first.name} ${first.symbol}`;
  return (
    <td {...span} data-item={item}>
      <button type="button" class="channel" title={title} tabIndex={isReached ? 0 : -1} onClick={() => onShow(first.id)}>
        <span>{names}</span> <span class="mono">{first.symbol}</span>
      </button>
    </td>
  );
}

function BandHead({ band }: { band: Band }) {
  const { module, gap } = band;
  if (module === null) {
    return (
      <th scope="rowgroup" rowSpan={band.rows.length} class="band none">
        {texts.station.reasons[gap?.reason ?? "padding"]} {gap?.name}
      </th>
    );
  }
  return (
    <th scope="rowgroup" rowSpan={band.rows.length} class={`band ${module.position % 2 === 0 ? "even" : "odd"}`}>
      <button type="button" class="link" tabIndex={-1} onClick={() => selectPosition(module.position)}>
        {module.position} {module.name}
      </button>
    </th>
  );
}

function Image({ title, bands, size, first, onShow }: { title: string; bands: readonly Band[]; size: number; first: number; onShow: Show }) {
  const held = useMemo(
    () => bands.flatMap((band) => band.rows.flatMap((row) => row.segments.filter((one) => one.channels.length > 0))),
    [bands],
  );
  const items = useMemo(() => new Map(held.map((segment, index) => [segment, index])), [held]);
  const roving = useRoving(held.length);
  return (
    <section class="image-area">
      <h2>{title} <span class="faint">{size === 0 ? texts.image.noData : texts.image.from(size, first)}</span></h2>
      {size > 0 && (
        <table class="image station-image" aria-label={title} onKeyDown={roving.onKeyDown} onFocusIn={roving.onFocusIn}>
          <thead>
            <tr>
              <th scope="col">{words.module}</th>
              <th scope="col">{texts.image.byte}</th>
              {bitNumbers.map((bit) => <th key={bit} scope="col" aria-label={texts.image.bit(bit)}>{bit}</th>)}
            </tr>
          </thead>
          {bands.map((band) => (
            <tbody key={band.first}>
              {band.rows.map((row, index) => (
                <tr key={row.byte}>
                  {index === 0 && <BandHead band={band} />}
                  <th scope="row">{row.byte}</th>
                  {row.segments.map((segment, at) => {
                    const item = items.get(segment) ?? -1;
                    const reason = texts.station.reasons[band.gap?.reason ?? "no channel"] ?? "";
                    return <Held key={at} segment={segment} reason={reason} item={item} isReached={item === roving.current} onShow={onShow} />;
                  })}
                </tr>
              ))}
            </tbody>
          ))}
        </table>
      )}
    </section>
  );
}

/** Both process images of the station. A channel leads to its row of the table of channels. */
export const StationImages = memo(function StationImages({ plan, channels, onShow }: {
  plan: StationPlan;
  channels: StationChannels;
  onShow: Show;
}) {
  const input = useMemo(() => bandsOf(plan, channels.channels, "in"), [plan, channels]);
  const output = useMemo(() => bandsOf(plan, channels.channels, "out"), [plan, channels]);
  return (
    <div class="image-areas">
      <Image title={texts.image.in} bands={input} size={plan.input.size} first={plan.input.offset} onShow={onShow} />
      <Image title={texts.image.out} bands={output} size={plan.output.size} first={plan.output.offset} onShow={onShow} />
    </div>
  );
});
