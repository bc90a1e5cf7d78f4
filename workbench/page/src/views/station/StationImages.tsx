import { useMemo } from "preact/hooks";
import type { StationChannel, StationChannels, StationModule, StationPlan } from "../../api/stationTypes";
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

function Held({ segment, item, isReached, onShow }: {
  segment: Segment;
  item: number;
  isReached: boolean;
  onShow: Show;
}) {
  const span = { colSpan: segment.bits, rowSpan: segment.rows, class: classOf(segment) };
  const channels = segment.channels as readonly StationChannel[];
  const [first] = channels;
  if (first === undefined) return <td {...span}><span class="heard">{texts.image.free}</span></td>;
  const names = channels.map(channelName).join(", ");
  const title = channels.length > 1 ? texts.image.overlap(names) : `${first.module_name}: ${first.name} ${first.symbol}`;
  return (
    <td {...span} data-item={item}>
      <button type="button" class="channel" title={title} tabIndex={isReached ? 0 : -1} onClick={() => onShow(first.id)}>
        <span>{names}</span>{segment.bits === bitNumbers.length && <span class="mono"> {first.symbol}</span>}
      </button>
    </td>
  );
}

/** Bytes of no module: one row, however many they are. */
function GapRow({ band }: { band: Band }) {
  const last = band.first + band.size - 1;
  return (
    <tr>
      <td class="band none" />
      <th scope="row">{band.size === 1 ? band.first : words.bytes(band.first, last)}</th>
      <td colSpan={bitNumbers.length} class="free">{texts.station.reasons[band.gap?.reason ?? "padding"]} {band.gap?.name}</td>
    </tr>
  );
}

function BandHead({ band, module }: { band: Band; module: StationModule }) {
  return (
    <th scope="rowgroup" rowSpan={band.rows.length} class={`band ${module.position % 2 === 0 ? "even" : "odd"}`}>
      <button type="button" class="link" tabIndex={-1} onClick={() => selectPosition(module.position)}>
        {module.position} {module.name}
      </button>
    </th>
  );
}

interface BandBodyProps {
  band: Band;
  items: ReadonlyMap<Segment, number>;
  reached: number;
  onShow: Show;
}

function BandBody({ band, items, reached, onShow }: BandBodyProps) {
  const { module, rows } = band;
  if (module === null) return <tbody><GapRow band={band} /></tbody>;
  return (
    <tbody>
      {rows.map((row, index) => (
        <tr key={row.byte}>
          {index === 0 && <BandHead band={band} module={module} />}
          <th scope="row">{row.byte}</th>
          {row.segments.map((segment, at) => {
            const item = items.get(segment) ?? -1;
            return <Held key={at} segment={segment} item={item} isReached={item === reached} onShow={onShow} />;
          })}
        </tr>
      ))}
    </tbody>
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
            <BandBody key={band.first} band={band} items={items} reached={roving.current} onShow={onShow} />
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
