// The row of a station: what is done to it, and the addresses at once. What is expected is what mxtool plans
// for the text that the page shows.
"use strict";

const { equal, isTrue, soon, soonHas, untilMet } = require("../harness/expected.cjs");
const { StationView } = require("../harness/station-view.cjs");

const call = ["stations/pump-house.yaml", "--folder", ".", "--db", "sqlite:catalogue.sqlite"];
const entries = ["MX0116", "Levels", "flow meter", "Pumps"];

async function open(t, ...served) {
  const page = await t.open(await t.sharedServer(...(served.length > 0 ? served : call)));
  return { page, view: await StationView.on(page) };
}

// Chromium tells the page of a drag with a delay: the pointer is moved until the page has marked the place twice.
async function dragTo(page, from, to, place) {
  const [first, second] = [await from.boundingBox(), await to.boundingBox()];
  const { mouse } = page.page;
  await mouse.move(first.x + first.width / 2, first.y + 12);
  await mouse.down();
  await mouse.move(first.x + first.width / 2 + 12, first.y + 14, { steps: 3 });
  let marked = 0;
  await untilMet("marked place", async () => {
    await mouse.move(second.x + second.width - 6 - (marked % 2), second.y + 20);
    marked += (await page.evaluate(() => document.querySelector(".drop-before")?.dataset.entry)) === place ? 1 : 0;
    return marked;
  }, (found) => found >= 3, `before entry ${place}`);
  await mouse.up();
}

module.exports = {
  async "shows modules, addresses, gaps and totals in their order"(t) {
    const { page, view } = await open(t);
    equal("entries", await view.names(), entries);
    await view.isAsPlanned(t.shared);
    const pictures = await untilMet("pictures", () => page.evaluate(() => [...document.querySelectorAll(".entry-card img")].map((one) => one.src.slice(0, 11))),
      (found) => found.length > 0, "one at least");
    isTrue("each is an image", pictures.every((one) => one === "data:image/"));
  },

  async "shows a row of 64 modules as planned"(t) {
    const { view } = await open(t, "stations/row-of-64.yaml", "--folder", ".");
    const plan = await view.isAsPlanned(t.shared);
    equal("modules", plan.totals.modules, 64);
  },

  async "shows a row in the order of a layout of its own"(t) {
    const { view } = await open(t, "stations/own-layout.yaml", "--folder", ".");
    await view.isAsPlanned(t.shared);
  },

  async "adds a file of the folder at a place"(t) {
    const { page, view } = await open(t);
    await page.click("button", "Add module …");
    await page.choose("Place", "1", "dialog");
    await page.fillField("Search words", "MX0108.yaml", "", "dialog");
    await page.click("button", "8 DI 24 V DC 3 ms ../modules/MX0108.yaml", "dialog");
    await soon("entries", () => view.names(), ["MX0116", "MX0108", "Levels", "flow meter", "Pumps"]);
    await view.textHas("  - ../modules/MX0108.yaml\n");
    await view.isAsPlanned(t.shared);
    equal("selected", await view.selected(), "MX0108");
  },

  async "says what was added and where, with the way back as long as it is the last change"(t) {
    const { page, view } = await open(t);
    const add = async () => {
      await page.click("button", "Add module …");
      await soonHas("what the list does", () => page.text("dialog"), "the dialog closes");
      await page.choose("Place", "1", "dialog");
      await page.click("button", "8 DI 24 V DC 3 ms ../modules/MX0108.yaml", "dialog");
      await soon("dialog", () => page.dialog(), "");
    };
    const said = "Added: MX0108 (8 DI 24 V DC 3 ms), place 2 of 5";
    await add();
    await soon("message", () => page.text(".toast span"), said);
    equal("heard", await page.text(".heard[role=status]"), said);
    equal("selected", await view.selected(), "MX0108");
    await page.click("button", "Undo", ".toast");
    await soon("entries", () => view.names(), entries);
    await soon("the message is gone", () => page.has(".toast"), false);
    await add();
    await soon("message", () => page.text(".toast span"), said);
    await view.act("Remove");
    await soon("entries", () => view.names(), entries);
    await soon("the message is gone after another change", () => page.has(".toast"), false);
  },

  async "adds a module of the catalogue with a name"(t) {
    const { page, view } = await open(t);
    await page.click("button", "Add module …");
    await page.choose("Place", "4", "dialog");
    await page.fillField("Name (may be empty)", "Extra", "", "dialog");
    await page.fillField("Search words", "K38-304", "", "dialog");
    await page.click("button", "4 AI ±10 V / 0-20 mA 5a030304", "dialog");
    await soon("entries", () => view.names(), [...entries, "Extra"]);
    isTrue("by its identifier", /module: ["']?5a030304/.test(await view.text()));
    const plan = await t.shared.ofText(await view.text(), "station", "show", "--db", "sqlite:catalogue.sqlite");
    const { offset } = plan.modules[3].in;
    await soon("address", async () => (await view.row())[3].in, `${offset}–${offset + 7} (8 B)`);
  },

  async "adds a module from the catalogue's view"(t) {
    const { page, view } = await open(t);
    await page.click("link", "Catalogue");
    await page.fillField("Search words", "K38-304");
    await page.click("button", "Add to station: 4 AI ±10 V / 0-20 mA");
    await soon("entries", () => view.names(), [...entries, "5a030304"]);
  },

  async "moves a module by Alt and an arrow, and the focus with it"(t) {
    const { page, view } = await open(t);
    await view.choose("Levels");
    await page.press("Alt+ArrowLeft");
    await soon("entries", () => view.names(), ["Levels", "MX0116", "flow meter", "Pumps"]);
    await view.isAsPlanned(t.shared);
    await soonHas("focus", () => page.focused(), "Levels");
    await page.press("Alt+ArrowRight");
    await page.press("Alt+ArrowRight");
    await soon("entries", () => view.names(), ["MX0116", "flow meter", "Levels", "Pumps"]);
    await view.isAsPlanned(t.shared);
  },

  async "moves a module by dragging it"(t) {
    const { page, view } = await open(t);
    await dragTo(page, await view.card("MX0116"), await view.card("Levels"), "2");
    await soon("entries", () => view.names(), ["Levels", "MX0116", "flow meter", "Pumps"]);
    await view.isAsPlanned(t.shared);
  },

  async "moves a module by the menu"(t) {
    const { view } = await open(t);
    await view.choose("flow meter");
    await view.act("Move after");
    await soon("entries", () => view.names(), ["MX0116", "Levels", "Pumps", "flow meter"]);
    await view.isAsPlanned(t.shared);
  },

  async "removes a module, and undo brings it back with its comments"(t) {
    const { page, view } = await open(t);
    const before = await view.text();
    await view.choose("Levels");
    await page.press("Delete");
    await soon("entries", () => view.names(), ["MX0116", "flow meter", "Pumps"]);
    await view.isAsPlanned(t.shared);
    await page.press("Control+KeyZ");
    await soon("entries", () => view.names(), entries);
    equal("text", await view.text(), before);
    await page.press("Control+KeyY");
    await soon("entries", () => view.names(), ["MX0116", "flow meter", "Pumps"]);
  },

  async "reserves bytes for a module"(t) {
    const { page, view } = await open(t);
    await page.click("button", "Reserve bytes …");
    await page.fillField("Output bytes", "6", "", "dialog");
    await page.fillField("Name (may be empty)", "valves", "", "dialog");
    await page.choose("Place", "3", "dialog");
    await page.click("button", "Reserve", "dialog");
    await soon("entries", () => view.names(), ["MX0116", "Levels", "flow meter", "valves", "Pumps"]);
    await view.isAsPlanned(t.shared);
    const { gaps } = await t.shared.ofText(await view.text(), "station", "show");
    equal("reserved", gaps.filter((one) => one.name === "valves").map(({ image, offset, size }) => ({ image, offset, size })),
      [{ image: "out", offset: 0, size: 6 }]);
  },

  async "says what a number of bytes is"(t) {
    const { page } = await open(t);
    await page.click("button", "Reserve bytes …");
    await page.fillField("Input bytes", "many", "Enter", "dialog");
    await soonHas("reason", () => page.text("dialog"), "A number of bytes is expected: decimal, or hexadecimal after 0x.");
  },

  async "changes the bytes of a reserved place"(t) {
    const { page, view } = await open(t);
    await view.choose("flow meter");
    await page.fillField("Input bytes", "8", "Enter", ".selected-entry");
    await view.textHas("in: 8");
    await view.isAsPlanned(t.shared);
  },

  async "pins a module, and unpins it"(t) {
    const { page, view } = await open(t);
    await view.choose("Levels");
    await view.act("Pin to addresses …");
    await page.fillField("Byte of the input image", "4", "", "dialog");
    await page.fillField("Byte of the output image", "", "", "dialog");
    await page.click("button", "Pin", "dialog");
    await view.textHas("at: {in: 4}");
    await view.isAsPlanned(t.shared);
    await soonHas("mark", () => page.text(".entry-card[aria-pressed=true]"), "Pinned to byte 4");
    await view.act("Pin to addresses …");
    await page.click("button", "Unpin", "dialog");
    await view.textHas("at: {in: 4}", false);
    await view.isAsPlanned(t.shared);
  },

  async "refuses a pin on bytes of another module, and says why"(t) {
    const { page, view } = await open(t);
    const before = await view.text();
    await view.choose("Levels");
    await view.act("Pin to addresses …");
    await page.fillField("Byte of the input image", "0", "", "dialog");
    await page.click("button", "Pin", "dialog");
    const wanted = before.replace("    name: Levels\n", "    name: Levels\n    at: {in: 0}\n");
    t.shared.write("stations/wrong-pin.yaml", wanted);
    const { err } = await t.shared.run("station", "check", "stations/wrong-pin.yaml");
    const said = `${err}`.split("\n")[0];
    await soonHas("reason", () => page.text("dialog .refused-at"), "MX0116");
    isTrue(`mxtool refuses it too: ${said}`, (await t.shared.run("station", "show", "stations/wrong-pin.yaml")).code !== 0);
    equal("text", await view.text(), before);
  },

  async "pins all as mxtool station pin does"(t) {
    const { page, view } = await open(t);
    const expected = await t.shared.output("station", "pin", call[0], "-o", "-");
    await page.click("button", "Pin all");
    await soon("text", () => view.text(), expected.toString());
  },

  async "names a module, and refuses a name that another has"(t) {
    const { page, view } = await open(t);
    await view.choose("Levels");
    await page.fillField("Name", "Tanks", "Enter", ".entry-head");
    await soon("entries", () => view.names(), ["MX0116", "Tanks", "flow meter", "Pumps"]);
    await view.isAsPlanned(t.shared);
    await page.fillField("Name", "Pumps", "Enter", ".entry-head");
    await soonHas("reason", () => page.text(".entry-head .refused-at"), "Pumps");
    await view.textHas("name: Tanks");
  },

  async "a refused value names its field and what is accepted, and no line of a text that is not shown"(t) {
    const { page, view } = await open(t);
    await view.choose("Levels");
    await page.fill(await page.page.waitForSelector("[data-parameter=\"21\"] input"), "11");
    const reason = await soonHas("reason", () => page.text(".field-refused"), "-10 to 10 V");
    isTrue(`it names the field: ${reason}`, reason.includes("Upper limit"));
    equal("lines of a text", /\bline \d|:\d+:\d/.exec(reason), null);
    equal("excerpts", await page.texts(".field-refused .excerpt"), []);
  },

  async "sets aliases and comments of channels, and refuses an alias that is taken"(t) {
    const { page, view } = await open(t);
    await view.choose("Levels");
    await page.click("tab", "Its channels");
    await page.fillField("Alias of AI 3", "LT_103", "Enter");
    await page.fillField("Comment on AI 3", "level of tank 3", "Enter");
    const { channels } = await untilMet("channel", () => view.text().then((text) => t.shared.ofText(text, "station", "channels")),
      (found) => found.channels?.some((one) => one.comment === "level of tank 3"), "its comment");
    const { alias } = channels.find((one) => one.comment === "level of tank 3");
    equal("alias", alias, "LT_103");
    await page.fillField("Alias of AI 4", "LT_101", "Enter");
    await soonHas("reason", () => page.text("[role=tabpanel] .refused-at"), "LT_101");
    equal("it is not in the text", (await view.text()).split("LT_101").length, 2);
  },

  async "shows the channels of the station as mxtool lists them"(t) {
    const { page } = await open(t);
    const { channels } = await t.shared.json("station", "channels", call[0]);
    await page.click("tab", "All channels");
    const shown = () => page.evaluate(() => [...document.querySelectorAll("[role=tabpanel] tbody tr")].map((row) =>
      ["Channel", "Address", "Alias", "Comment"].map((one) => row.querySelector(`[data-label="${one}"]`)?.innerText.trim() ?? "").join("|")));
    await soon("channels", shown, channels.map((one) => [one.name, one.symbol, one.alias, one.comment].join("|")));
  },

  async "shows both process images, and leads from a channel to its row"(t) {
    const { page } = await open(t);
    await page.click("tab", "Process images");
    const { channels } = await t.shared.json("station", "channels", call[0]);
    const ofImage = (direction) => channels.filter((one) => one.direction === direction)
      .map((one) => `${one.module_name}: ${one.name} ${one.symbol}`).sort();
    const shown = async (name) => (await page.evaluate((label) =>
      [...document.querySelectorAll(`table[aria-label=${label}] button.channel`)].map((one) => one.title), name)).sort();
    await soon("inputs", () => shown("Inputs"), ofImage("in"));
    await soon("outputs", () => shown("Outputs"), ofImage("out"));
    await page.click("button", "LT_102", "table[aria-label=Inputs]");
    await soonHas("row of the channel", () => page.text("tr.chosen"), "LT_102");
  },

  async "shows images of 2 GiB as fast as others"(t) {
    const workplace = t.workplace();
    workplace.write("far.yaml", "station: Far\nmodules:\n  - modules/MX0116.bin\n"
      + "  - {module: modules/MX0208.bin, at: {in: 2000000000}}\n");
    const page = await t.open(await t.server(workplace, "far.yaml"));
    await page.heading("Far");
    await page.click("tab", "Process images");
    await soonHas("gap", () => page.text("table[aria-label=Inputs]"), "2–1999999999");
    const began = Date.now();
    await page.click("tab", "All channels");
    await page.click("tab", "Process images");
    await soonHas("module after it", () => page.text("table[aria-label=Inputs]"), "2000000000");
    isTrue("within 3 s", Date.now() - began < 3_000);
  },
};
