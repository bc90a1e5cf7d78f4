// A server that ends while the page is open, and one that comes back.
"use strict";

const { isTrue, soon, soonHas } = require("../harness/expected.cjs");
const { StationView } = require("../harness/station-view.cjs");

const file = "stations/pump-house.yaml";
const saidMs = 3_000;
const refused = /ERR_CONNECTION_REFUSED|Failed to load resource|ERR_CONNECTION_RESET|ERR_EMPTY_RESPONSE/;

async function openChanged(t) {
  const workplace = t.workplace();
  const server = await t.server(workplace, file, "--folder", ".");
  const page = await t.open(server);
  const view = await StationView.on(page);
  await view.choose("Levels");
  await page.fillField("Name", "Kept", "Enter", ".entry-head");
  await view.textHas("name: Kept");
  return { workplace, server, page, view };
}

module.exports = {
  async "is said within three seconds, and the draft is kept"(t) {
    t.allow(refused);
    const { server, page, view } = await openChanged(t);
    await server.end("SIGKILL");
    const began = Date.now();
    await soonHas("message", () => page.text(".server-state"), "The server does not answer.");
    // A busy computer adds to the two seconds between questions.
    isTrue(`within ${saidMs} ms, not ${Date.now() - began} ms`, Date.now() - began < saidMs + 1_500);
    await soonHas("state in the header", () => page.text("header"), "Server lost");
    await view.textHas("name: Kept");
  },

  async "a change is not made meanwhile, and the page says so"(t) {
    t.allow(refused);
    const { server, page, view } = await openChanged(t);
    await server.end("SIGKILL");
    const before = await view.text();
    await view.choose("Pumps");
    await page.press("Delete");
    await soonHas("message", () => page.text(), "Not changed: the server does not answer. Try again when it does.");
    await soon("text", () => view.text(), before);
  },

  async "goes on with the draft after the address of the new run is opened"(t) {
    t.allow(refused);
    t.allow(/status of 401/);
    const { workplace, server, page, view } = await openChanged(t);
    await server.end("SIGKILL");
    const next = await t.serverAgain(workplace, server, file, "--folder", ".");
    await page.page.goto(next.address);
    await soonHas("state in the header", () => page.text("header"), "Server connected");
    await soonHas("text", () => view.text(), "name: Kept");
    await page.press("Control+KeyS");
    await soonHas("file", async () => workplace.read(file), "name: Kept");
  },
};
