import type { ImageArea, MappedChannel } from "../../api/types";

const bitsOfByte = 8;

/** Bits side by side that the same channels hold; none: free. */
export interface Segment {
  key: string;
  channels: readonly MappedChannel[];
  bits: number;
  /** How many rows it takes: more than one for whole bytes of one channel. */
  rows: number;
}

export interface ImageRow {
  byte: number;
  /** From the highest bit down; what a row above reaches into this one is left out. */
  segments: Segment[];
}

type Holders = ReadonlyMap<number, readonly MappedChannel[]>;

function holdersOf(channels: readonly MappedChannel[]): Holders {
  const holders = new Map<number, MappedChannel[]>();
  for (const channel of channels) {
    for (let bit = channel.firstBit; bit < channel.firstBit + channel.bits; ++bit) {
      const here = holders.get(bit);
      if (here === undefined) holders.set(bit, [channel]);
      else here.push(channel);
    }
  }
  return holders;
}

function segmentsOf(byte: number, holders: Holders): Segment[] {
  const segments: Segment[] = [];
  for (let bit = bitsOfByte - 1; bit >= 0; --bit) {
    const channels = holders.get(byte * bitsOfByte + bit) ?? [];
    const key = channels.map((one) => one.id).join(" ");
    const last = segments.at(-1);
    if (last !== undefined && last.key === key) ++last.bits;
    else segments.push({ key, channels, bits: 1, rows: 1 });
  }
  return segments;
}

/** Returns the bytes of an image as rows of a table of eight bits. */
export function imageRows(area: ImageArea, channels: readonly MappedChannel[]): ImageRow[] {
  const holders = holdersOf(channels);
  const rows: ImageRow[] = [];
  let above: Segment | null = null;
  for (let byte = area.first_byte; byte < area.first_byte + area.size; ++byte) {
    const segments = segmentsOf(byte, holders);
    const whole: Segment | null = segments.length === 1 ? segments[0] ?? null : null;
    if (whole !== null && above !== null && whole.key === above.key) {
      ++above.rows;
      rows.push({ byte, segments: [] });
    } else {
      above = whole;
      rows.push({ byte, segments });
    }
  }
  return rows;
}
