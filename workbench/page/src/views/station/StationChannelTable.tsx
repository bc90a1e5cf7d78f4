import { useEffect, useMemo, useState } from "preact/hooks";
import type { StationChannel, StationChannels } from "../../api/stationTypes";
import { ChosenRow } from "../../parts/ChosenRow";
import { memo } from "../../parts/memo";
import { hasWords } from "../../state/words";
import { texts } from "../../texts";
import { selectPosition } from "./planning";
import { channelKey } from "./stationImage";

const words = texts.station.channels;

function placeOf({ firstBit, bits }: StationChannel): string {
  const byte = Math.floor(firstBit / 8);
  return bits < 8 ? words.bits(byte, firstBit % 8, bits) : words.bytes(byte, bits);
}

const Row = memo(function Row({ channel, isChosen }: { channel: StationChannel; isChosen: boolean }) {
  const { columns } = words;
  return (
    <ChosenRow isChosen={isChosen}>
      <td data-label={columns.module}>
        <button type="button" class="link" onClick={() => selectPosition(channel.module)}>{channel.module} {channel.module_name}</button>
      </td>
      <th scope="row" data-label={columns.channel}>{channel.name}</th>
      <td class="mono" data-label={columns.symbol}>{channel.symbol}</td>
      <td data-label={columns.place}>{placeOf(channel)}</td>
      <td data-label={columns.direction}><span class={`direction ${channel.direction}`}>{texts.channels.directions[channel.direction]}</span></td>
      <td data-label={columns.alias}>{channel.alias}</td>
      <td data-label={columns.comment}>{channel.comment}</td>
    </ChosenRow>
  );
});

/** All channels of the station with their addresses; `chosen`: the key of the one to show. */
export const StationChannelTable = memo(function StationChannelTable({ channels, chosen }: {
  channels: StationChannels;
  chosen: string | null;
}) {
  const [sought, setSought] = useState("");
  useEffect(() => setSought(""), [chosen]);
  const found = useMemo(() => channels.channels.filter((one) =>
    hasWords(sought, one.module_name, one.name, one.symbol, one.alias, one.comment)), [channels, sought]);
  const { columns } = words;
  return (
    <div class="station-channels">
      <div class="tools">
        <input
          type="search"
          aria-label={words.filter}
          placeholder={words.filter}
          autoComplete="off"
          value={sought}
          onInput={(event) => setSought(event.currentTarget.value)}
        />
        <span class="faint" role="status">{words.count(found.length, channels.channels.length)}</span>
      </div>
      <table class="stacked">
        <caption class="heard">{words.title}</caption>
        <thead>
          <tr>{Object.values(columns).map((column) => <th key={column} scope="col">{column}</th>)}</tr>
        </thead>
        <tbody>
          {found.map((one) => <Row key={channelKey(one)} channel={one} isChosen={channelKey(one) === chosen} />)}
        </tbody>
      </table>
    </div>
  );
});
