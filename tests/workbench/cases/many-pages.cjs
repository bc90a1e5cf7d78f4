// Many pages of one server at the same time, each with its own draft. PAGES=50 CASE_SECONDS=600 is the long form of
// those in the browser, which is slower than the server.
"use strict";

const { equal, soon } = require("../harness/expected.cjs");
const { PageClient } = require("../harness/page-client.cjs");
const { StationView } = require("../harness/station-view.cjs");

const count = Number(process.env.PAGES ?? "4");
const station = "stations/pump-house.yaml";
const openedAtOnce = 4;
const waitMs = 8_000 + 1_000 * count;

/** What each page sets: another value, so that no page can be taken for another. */
function valueOf(index) {
  return (1 + index / 100).toFixed(2);
}

async function openPage(t, server) {
  const page = await t.open(server);
  const view = new StationView(page);
  await soon("entries", () => view.names(), ["MX0116", "Levels", "flow meter", "Pumps"], waitMs);
  return { page, view };
}

/** Opens the pages a few at a time: the browser needs longer for a new page than the server. */
async function openAll(t, server) {
  const pages = [];
  while (pages.length < count) {
    const some = Math.min(openedAtOnce, count - pages.length);
    pages.push(...await Promise.all(Array.from({ length: some }, () => openPage(t, server))));
  }
  return pages;
}

async function change({ page, view }, index) {
  await view.choose("Levels");
  await soon("title of the fields", () => page.has("[data-parameter]"), true, waitMs);
  const field = await page.find("field", "Upper limit", "main");
  await page.fill(field, valueOf(index));
  await soon("text", async () => (await view.text()).includes(`Upper limit: ${valueOf(index)}`), true, waitMs);
}

/** What a page asks for when it is opened, and for some changes of a value after that; gives each status. */
async function useOnce(server, text, value) {
  const client = new PageClient(server);
  const answers = await Promise.all(["/", "/workbench.js", "/workbench.css", "/icon.svg"].map((path) => client.ask("GET", path)));
  answers.push(await client.ask("GET", "/api/v1/start"), await client.ask("GET", "/api/v1/file"));
  for (let change = 0; change < 5; ++change) {
    const changed = text.replace("Upper limit: 9.9 V", `Upper limit: ${value}`);
    const [planned, version] = await Promise.all([
      client.ask("POST", "/api/v1/station", { text: changed, module: 2 }),
      client.ask("GET", "/api/v1/file/version"),
    ]);
    answers.push(planned, version, { status: planned.body.includes(value) ? 200 : "the answer is of another draft" });
  }
  client.end();
  return answers.map(({ status }) => status);
}

module.exports = {
  async "the requests of fifty pages at once are all answered"(t) {
    const server = await t.sharedServer(station, "--folder", ".");
    const text = t.shared.read(station);
    const statuses = await Promise.all(Array.from({ length: 50 }, (_, index) => useOnce(server, text, valueOf(index))));
    equal("statuses other than 200", statuses.flat().filter((one) => one !== 200), []);
  },

  async "each has its draft, and the server answers all of them"(t) {
    const workplace = t.workplace();
    const before = workplace.read(station);
    const server = await t.server(workplace, station, "--folder", ".");
    const opened = Date.now();
    const pages = await openAll(t, server);
    const changed = Date.now();
    await Promise.all(pages.map(change));
    console.log(`       ${count} pages opened in ${changed - opened} ms, changed in ${Date.now() - changed} ms`);
    for (const [index, { view }] of pages.entries()) {
      const text = await view.text();
      equal("draft", text, before.replace("Upper limit: 9.9 V", `Upper limit: ${valueOf(index)}`));
      const { bytes } = (await workplace.ofText(text, "station", "config")).modules[1];
      await soon("bytes of this page", () => view.module.bytes("raw"), bytes, waitMs);
    }
    equal("file", workplace.read(station), before);
    const { status } = await server.call("start");
    equal("status of one more call", status, 200);
  },
};
