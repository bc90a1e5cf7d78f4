import { useMemo, useState } from "preact/hooks";
import type { ImageArea, MappedChannel, Module } from "../../api/types";
import { svgAddress } from "../../parts/Picture";
import { useRoving } from "../../parts/roving";
import { texts } from "../../texts";
import { imageRows } from "./imageRows";
import type { Segment } from "./imageRows";

const bitNumbers = [7, 6, 5, 4, 3, 2, 1, 0] as const;

interface AreaProps {
  title: string;
  area: ImageArea;
  channels: readonly MappedChannel[];
  onChannel(id: string): void;
}

interface HeldProps {
  segment: Segment;
  item: number;
  isReached: boolean;
  onChannel(id: string): void;
}

function nameOf(channel: MappedChannel): string {
  return channel.name === "" ? texts.parameters.channel(channel.number, "") : channel.name;
}

function classOf({ channels }: Segment): string {
  if (channels.length === 0) return "free";
  return channels.length > 1 ? "overlap" : channels[0]?.direction ?? "";
}

function Held({ segment, item, isReached, onChannel }: HeldProps) {
  const [channel] = segment.channels;
  const span = { colSpan: segment.bits, rowSpan: segment.rows, class: classOf(segment) };
  if (channel === undefined) return <td {...span}><span class="heard">{texts.image.free}</span></td>;
  const names = segment.channels.map(nameOf).join(", ");
  const title = segment.channels.length > 1 ? texts.image.overlap(names) : `${names} ${channel.symbol}`;
  return (
    <td {...span} data-item={item}>
      <button type="button" class="channel" title={title} tabIndex={isReached ? 0 : -1} onClick={() => onChannel(channel.id)}>
        <span>{segment.channels.length > 1 ? title : names}</span> <span class="mono">{channel.symbol}</span>
      </button>
    </td>
  );
}

function Head() {
  return (
    <thead>
      <tr>
        <th scope="col">{texts.image.byte}</th>
        {bitNumbers.map((bit) => <th key={bit} scope="col" aria-label={texts.image.bit(bit)}>{bit}</th>)}
      </tr>
    </thead>
  );
}

/** One image: a row for each byte, a cell for the bits of each channel. */
function Area({ title, area, channels, onChannel }: AreaProps) {
  const rows = useMemo(() => imageRows(area, channels), [area, channels]);
  const held = rows.flatMap((row) => row.segments.filter((one) => one.channels.length > 0));
  const items = useMemo(() => new Map(held.map((segment, index) => [segment, index])), [rows]);
  const roving = useRoving(held.length);
  return (
    <section class="image-area">
      <h2>{title} <span class="faint">{area.size === 0 ? texts.image.noData : texts.image.from(area.size, area.first_byte)}</span></h2>
      {area.size > 0 && (
        <table class="image" aria-label={title} onKeyDown={roving.onKeyDown} onFocusIn={roving.onFocusIn}>
          <Head />
          <tbody>
            {rows.map(({ byte, segments }) => (
              <tr key={byte}>
                <th scope="row">{byte}</th>
                {segments.map((segment, index) => {
                  const item = items.get(segment) ?? -1;
                  return <Held key={index} segment={segment} item={item} isReached={item === roving.current} onChannel={onChannel} />;
                })}
              </tr>
            ))}
          </tbody>
        </table>
      )}
    </section>
  );
}

function Legend() {
  return (
    <ul class="legend">
      <li><i class="in" />{texts.image.in}</li>
      <li><i class="out" />{texts.image.out}</li>
      <li><i class="free" />{texts.image.free}</li>
    </ul>
  );
}

/** The process images of a module: as tables with links to the channels, or as mxtool draws them. */
export function ProcessImage({ module, onChannel }: { module: Module; onChannel(id: string): void }) {
  const [isDrawn, setDrawn] = useState(false);
  const { input, output, channels } = module.channels;
  const inputs = useMemo(() => channels.filter((one) => one.direction === "in"), [channels]);
  const outputs = useMemo(() => channels.filter((one) => one.direction !== "in"), [channels]);
  return (
    <div class="process-image">
      <div class="tools">
        <Legend />
        <button type="button" class="small" onClick={() => setDrawn(!isDrawn)}>{isDrawn ? texts.image.asTable : texts.image.asDrawn}</button>
      </div>
      {isDrawn
        ? <img class="drawn" src={svgAddress(module.processImage)} alt={texts.image.drawn(module.device.label)} />
        : (
          <div class="image-areas">
            <Area title={texts.image.in} area={input} channels={inputs} onChannel={onChannel} />
            <Area title={texts.image.out} area={output} channels={outputs} onChannel={onChannel} />
          </div>
        )}
    </div>
  );
}
