import type { DeviceChannel } from "../../api/types";
import { ChosenRow } from "../../parts/ChosenRow";
import { texts } from "../../texts";

function Row({ channel, isChosen }: { channel: DeviceChannel; isChosen: boolean }) {
  const hasPlace = channel.symbol !== "";
  return (
    <ChosenRow isChosen={isChosen}>
      <td class="number">{channel.number}</td>
      <th scope="row">{channel.name}</th>
      <td><span class={`direction ${channel.direction}`}>{texts.channels.directions[channel.direction] ?? texts.nothing}</span></td>
      <td class="mono">{hasPlace ? channel.symbol : texts.nothing}</td>
      <td class="number">{hasPlace ? channel.byte : texts.nothing}</td>
      <td class="number">{hasPlace ? channel.bit_offset : texts.nothing}</td>
      <td class="number">{hasPlace ? channel.bit_length : texts.nothing}</td>
    </ChosenRow>
  );
}

/** The channels of a module; `chosen`: the identifier of the one to show. */
export function ChannelTable({ channels, chosen }: { channels: readonly DeviceChannel[]; chosen: string | null }) {
  if (channels.length === 0) return <p class="faint">{texts.channels.none}</p>;
  const { number, name, direction, symbol, byte, bit, bits, title } = texts.channels;
  return (
    <section class="box scrolls" tabIndex={0} aria-label={title}>
      <table>
        <caption class="heard">{title}</caption>
        <thead>
          <tr>
            <th scope="col" class="number">{number}</th>
            <th scope="col">{name}</th>
            <th scope="col">{direction}</th>
            <th scope="col">{symbol}</th>
            <th scope="col" class="number">{byte}</th>
            <th scope="col" class="number">{bit}</th>
            <th scope="col" class="number">{bits}</th>
          </tr>
        </thead>
        <tbody>
          {channels.map((one) => <Row key={one.id} channel={one} isChosen={one.id === chosen} />)}
        </tbody>
      </table>
    </section>
  );
}
