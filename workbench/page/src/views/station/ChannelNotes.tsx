import { useMemo } from "preact/hooks";
import type { Entry, StationChannels, UnplacedChannel } from "../../api/stationTypes";
import { memo } from "../../parts/memo";
import { useStore } from "../../state/store";
import { texts } from "../../texts";
import { draft } from "./draft";
import { EditedText } from "./EditedText";
import { makeNextChange } from "./planning";
import { RefusedAt } from "./RefusedAt";

const words = texts.station.notes;

interface Noted extends UnplacedChannel {
  alias: string;
  comment: string;
  symbol: string;
}

function channelsOf(all: StationChannels, position: number): Noted[] {
  const placed = all.channels.filter((one) => one.module === position);
  const others = all.without_symbol.filter((one) => one.module === position);
  return [...placed, ...others.map((one) => ({ ...one, alias: "", comment: "", symbol: "" }))]
    .sort((a, b) => a.number - b.number);
}

interface RowProps {
  entry: number;
  channel: Noted;
}

/** Returns alias and comment as they are after the last change: the row may show older ones. */
function latestNote(entry: number, id: string): Pick<Noted, "alias" | "comment"> {
  const { answer, planned } = draft.get();
  const position = answer?.entries[entry]?.position;
  const found = planned?.channels?.channels.find((one) => one.module === position && one.id === id);
  return { alias: found?.alias ?? "", comment: found?.comment ?? "" };
}

const sourceOf = (entry: number, id: string): string => `channel ${entry} ${id}`;

const NoteRow = memo(function NoteRow({ entry, channel }: RowProps) {
  const { alias, comment, id, symbol } = channel;
  const source = sourceOf(entry, id);
  const refused = useStore(draft, (value) => (value.refused?.source === source ? value.refused : null));
  const note = (now: { alias: string } | { comment: string }): void => {
    void makeNextChange(() => {
      const both = { ...latestNote(entry, id), ...now };
      return [{ kind: "channel", entry, channel: `#${id}`, ...both }, { source, text: both.alias }];
    });
  };
  const { name: column, symbol: address, alias: aliasWord, comment: commentWord } = words.columns;
  return (
    <tr>
      <th scope="row" data-label={column}>{channel.name === "" ? texts.parameters.channel(channel.number, "") : channel.name}</th>
      <td class="mono" data-label={address}>{symbol === "" ? texts.nothing : symbol}</td>
      <td data-label={aliasWord}>
        {symbol !== "" && (
          <EditedText
            label={words.aliasOf(channel.name)}
            value={alias}
            isRefused={refused !== null}
            describedBy={refused === null ? undefined : `note-${entry}-${id}`}
            onCommit={(text) => note({ alias: text.trim() })}
          />
        )}
        <RefusedAt source={source} id={`note-${entry}-${id}`} />
      </td>
      <td data-label={commentWord}>
        {symbol !== "" && (
          <EditedText label={words.commentOf(channel.name)} value={comment} onCommit={(text) => note({ comment: text.trim() })} />
        )}
      </td>
    </tr>
  );
});

/** The channels of a module, with alias and comment to be edited; a note on a channel without address has no effect. */
export function ChannelNotes({ entry, channels }: { entry: Entry; channels: StationChannels }) {
  const position = entry.position ?? 0;
  const own = useMemo(() => channelsOf(channels, position), [channels, position]);
  if (own.length === 0) return <p class="faint">{texts.channels.none}</p>;
  const { name, symbol, alias, comment } = words.columns;
  return (
    <table class="channel-notes stacked">
      <caption class="heard">{words.title}</caption>
      <thead>
        <tr>
          <th scope="col">{name}</th><th scope="col">{symbol}</th><th scope="col">{alias}</th><th scope="col">{comment}</th>
        </tr>
      </thead>
      <tbody>
        {own.map((channel) => (
          <NoteRow key={`${entry.index} ${channel.id}`} entry={entry.index} channel={channel} />
        ))}
      </tbody>
    </table>
  );
}
