import type { ConfigParameter } from "../api/types";

const wholeByte = 0xff;

/** A thing that holds a byte, and which bits of it; `isBits`: a bit field. */
export interface Held {
  id: string;
  mask: number;
  isBits: boolean;
}

/** The things that hold each byte, by the number of the byte. */
export type Cover = ReadonlyMap<number, readonly Held[]>;

const free: readonly Held[] = [];

export function heldAt(cover: Cover, index: number): readonly Held[] {
  return cover.get(index) ?? free;
}

function maskOf(parameter: ConfigParameter): number {
  return ((1 << parameter.bit_length) - 1) << parameter.bit_offset & wholeByte;
}

/** Returns which parameter holds each byte. Registers hold whole parameters, an image also bit fields. */
export function coverOf(parameters: readonly ConfigParameter[], isImage: boolean): Cover {
  const cover = new Map<number, Held[]>();
  for (const one of parameters) {
    const isBits = isImage && one.bit_length > 0;
    const held = { id: one.id, mask: isBits ? maskOf(one) : wholeByte, isBits };
    for (let index = one.byte; index < one.byte + one.size; ++index) {
      const here = cover.get(index);
      if (here === undefined) cover.set(index, [held]);
      else here.push(held);
    }
  }
  return cover;
}

/** Returns the bits of the byte that lit things hold. */
export function litBits(held: readonly Held[], lit: ReadonlySet<string>): number {
  return held.reduce((bits, one) => (lit.has(one.id) ? bits | one.mask : bits), 0);
}

/** Returns the bits of the byte that belong to bit fields. */
export function fieldBits(held: readonly Held[]): number {
  return held.reduce((bits, one) => (one.isBits ? bits | one.mask : bits), 0);
}

/** Returns the bytes of the text that mxtool writes. */
export function bytesOf(hex: string): readonly string[] {
  return hex === "" ? [] : hex.split(" ");
}
