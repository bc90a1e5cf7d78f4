// Expectations that become true, not after a time that was guessed.
"use strict";

const assert = require("assert");
const { isDeepStrictEqual, inspect } = require("util");

const patienceMs = 20_000;
const stepMs = 15;

/** An expectation that was not met: the report shows what was expected and what was found. */
class Unexpected extends Error {
  constructor(what, expected, found) {
    const shown = (value) => (typeof value === "string" ? value : inspect(value, { depth: 6, maxArrayLength: 200 }));
    super(`${what}\n  expected: ${shown(expected)}\n  found:    ${shown(found)}`);
  }
}

const pause = (ms) => new Promise((done) => setTimeout(done, ms));

// What a page shows may be gone while it is read.
async function readOnce(read) {
  try {
    return await read();
  } catch (error) {
    return `not read: ${error.message}`;
  }
}

/** Reads again and again until `isMet` accepts what was read; returns that. */
async function untilMet(what, read, isMet, expected, waitMs = patienceMs) {
  const end = Date.now() + waitMs;
  for (;;) {
    const found = await readOnce(read);
    if (isMet(found)) {
      return found;
    }
    if (Date.now() > end) {
      throw new Unexpected(what, expected, found);
    }
    await pause(stepMs);
  }
}

/** Waits until `read` gives `expected`. */
function soon(what, read, expected, waitMs) {
  return untilMet(what, read, (found) => isDeepStrictEqual(found, expected), expected, waitMs);
}

/** Waits until `read` gives a text that has `expected`, a text or a regular expression. */
function soonHas(what, read, expected, waitMs) {
  const has = (found) => typeof found === "string" && !found.startsWith("not read: ")
    && (expected instanceof RegExp ? expected.test(found) : found.includes(expected));
  return untilMet(what, read, has, expected, waitMs);
}

function equal(what, found, expected) {
  if (!isDeepStrictEqual(found, expected)) {
    throw new Unexpected(what, expected, found);
  }
}

/** Expects equal bytes; says where they begin to differ. */
function equalBytes(what, found, expected) {
  if (Buffer.compare(found, expected) === 0) {
    return;
  }
  let at = 0;
  while (at < found.length && found[at] === expected[at]) {
    ++at;
  }
  const around = (bytes) => JSON.stringify(bytes.subarray(Math.max(0, at - 40), at + 60).toString());
  throw new Unexpected(`${what}: ${found.length} bytes, expected ${expected.length}; different from byte ${at} on`,
    around(expected), around(found));
}

function isTrue(what, condition) {
  assert.ok(condition, what);
}

module.exports = { soon, soonHas, untilMet, equal, equalBytes, isTrue, Unexpected };
