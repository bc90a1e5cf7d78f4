// Random choices that a seed repeats.
"use strict";

class Random {
  constructor(seed) {
    this.state = seed >>> 0;
  }

  /** A whole number from 0 to below `count`. */
  below(count) {
    this.state = (Math.imul(this.state, 1664525) + 1013904223) >>> 0;
    return Math.floor((this.state / 0x1_0000_0000) * count);
  }

  of(all) {
    return all[this.below(all.length)];
  }
}

/** The seed of this run: RANDOM_SEED, otherwise always the same. */
const seed = Number(process.env.RANDOM_SEED ?? "19");

module.exports = { Random, seed };
