// Memory of page and server over many changes: the bounds are far above what is measured, and far below a leak of
// what a change needs. CHANGES=100000 CASE_SECONDS=7200 is the long form.
"use strict";

const fs = require("fs");
const { isTrue } = require("../harness/expected.cjs");
const { StationView } = require("../harness/station-view.cjs");

const changes = Number(process.env.CHANGES ?? "150");
const warmUp = 30;
const atOnce = 25;
const mostHeapGrowth = 8 * 1024 * 1024;
const mostServerGrowth = 16 * 1024 * 1024;

/** `count` changes in parts: a call of the browser has a time limit. */
async function changeOften(page, id, count) {
  for (let done = 0; done < count; done += atOnce) {
    await changeSome(page, id, Math.min(atOnce, count - done));
  }
}

/** Sets a number of the selected module again and again, each time as soon as the bytes of the last one are there. */
function changeSome(page, id, count) {
  return page.evaluate(async (parameter, times) => {
    const bytes = () => [...document.querySelectorAll("[aria-label=\"Parameter image\"] [data-byte] > span:first-child")].map((one) => one.textContent).join("");
    const next = () => new Promise((done) => setTimeout(done, 1));
    for (let index = 0; index < times; ++index) {
      const field = document.querySelector(`[data-parameter="${parameter}"] input`);
      const before = bytes();
      field.value = field.value === "1" ? "2" : "1";
      field.dispatchEvent(new Event("input", { bubbles: true }));
      await next();
      field.dispatchEvent(new KeyboardEvent("keydown", { key: "Enter", bubbles: true }));
      while (bytes() === before) await next();
    }
  }, id, count);
}

async function heapOf(page) {
  const session = await page.page.createCDPSession();
  await session.send("HeapProfiler.collectGarbage");
  await session.detach();
  return (await page.page.metrics()).JSHeapUsedSize;
}

function residentOf({ process }) {
  const [, kib] = /VmRSS:\s+(\d+) kB/.exec(fs.readFileSync(`/proc/${process.pid}/status`, "utf8"));
  return Number(kib) * 1024;
}

module.exports = {
  async [`stays flat over ${changes} changes`](t) {
    const server = await t.server(t.workplace(), "stations/pump-house.yaml", "--folder", ".");
    const page = await t.open(server);
    const view = await StationView.on(page);
    await view.choose("Levels");
    const id = "21";
    await page.page.waitForSelector(`${view.module.field(id)} input`);
    await changeOften(page, id, warmUp);
    const before = { heap: await heapOf(page), server: residentOf(server) };
    await changeOften(page, id, changes);
    const growth = { heap: (await heapOf(page)) - before.heap, server: residentOf(server) - before.server };
    if (process.env.CHANGES !== undefined) {
      console.log(before, growth);
    }
    const shown = JSON.stringify({ before, growth });
    isTrue(`the heap of the page: ${shown}`, growth.heap < mostHeapGrowth);
    isTrue(`the memory of the server: ${shown}`, growth.server < mostServerGrowth);
  },
};
