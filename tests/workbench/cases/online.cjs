// A station on its coupler: compared, written, read, lost. What is expected comes from the command line, which asks the
// same simulated coupler.
"use strict";

const { equal, isTrue, soon, soonHas, untilMet } = require("../harness/expected.cjs");
const { OnlineView } = require("../harness/online-view.cjs");

const station = "stations/pump-house.yaml";
const lostMs = 3_000;

/** A coupler, a server that has it as its target, and the view of it. */
async function open(t, { faults = [], route = "#/online" } = {}) {
  const workplace = t.workplace();
  const coupler = await t.coupler(workplace, station, ...faults.flatMap((one) => ["--fault", one]));
  const server = await t.server(workplace, station, "--folder", ".", "--target", coupler.target);
  const page = await t.open(server, { route });
  const asked = (verb, ...more) => workplace.run("station", verb, station, "--target", coupler.target, ...more);
  const json = async (verb, ...more) => JSON.parse((await asked(verb, ...more, "--format", "json")).out);
  return { workplace, coupler, server, page, view: new OnlineView(page), asked, json };
}

module.exports = {
  async "without a target there is no view of it"(t) {
    const page = await t.open(await t.sharedServer(station, "--folder", "."));
    await soon("links", () => page.texts("nav a"), ["Catalogue", "Station"]);
    equal("no state of a target", await page.has("header [class*=target-]"), false);
  },

  async "the state of the connection is shown from the start, in every view"(t) {
    const { page, view, coupler, json } = await open(t, { route: "#/station" });
    await soon("state", () => view.badge(), "Target: not connected");
    await page.click("link", "Online");
    await soonHas("target", () => page.text(".online .totals"), coupler.target);
    await view.compare("Plan", await json("plan"));
    await soon("state", () => view.badge(), "Target: connected");
    await page.click("link", "Catalogue");
    equal("state", await view.badge(), "Target: connected");
  },

  async "a plan is what the command line plans, and writes nothing"(t) {
    const { page, view, json } = await open(t);
    const expected = await json("plan");
    equal("parameters that differ", expected.differing, 4);
    await view.compare("Plan", expected);
    const identified = expected.modules.map((one) => [String(one.position), one.name, one.module_id, "identified"]);
    equal("modules", await view.rows(".difference [role=region] table"), identified);
    const shown = await page.text(".difference");
    for (const said of ["4 parameters differ", "To write: 4 parameters in 5 registers, 3 requests", ...expected.notes]) {
      isTrue(`the plan says: ${said}`, shown.includes(said));
    }
    equal("on the coupler", await json("plan"), expected);
  },

  async "nothing is written before a plan was made, nor after a comparison alone"(t) {
    const { view, page, json } = await open(t);
    await soonHas("reason", () => view.hindrance(), "Plan first");
    const expected = await json("verify");
    await view.compare("Verify", expected);
    await soonHas("reason", () => view.hindrance(), "Plan first");
    await page.click("button", "Apply …", ".online");
    equal("dialog", await page.dialog(), "");
    equal("on the coupler", (await json("verify")).differing, 4);
  },

  async "a plan is written only after the word was typed"(t) {
    const { page, view, asked, json, coupler } = await open(t);
    const expected = await json("plan");
    await view.compare("Plan", expected);
    await view.agreeWith("ye");
    await soon("dialog", () => page.dialog(), `Write to ${coupler.target}`);
    await page.click("button", "Write", "dialog");
    equal("the dialog stays", await page.dialog(), `Write to ${coupler.target}`);
    equal("on the coupler", (await asked("verify")).code, 1);
    await page.press("Escape");
    await soon("dialog", () => page.dialog(), "");
    await view.agreeWith("yes");
    await soon("verdict", () => page.text(".report .verdict"), "Done: read back and equal to the station; 4 parameters changed");
    equal("on the coupler", (await asked("verify")).code, 0);
    const { modules } = expected;
    const written = modules.flatMap((module) => module.parameters.map((one) =>
      [module.name, one.name, `${one.address} (0x${one.address.toString(16)})`, one.found, one.planned, one.planned, "verified"]));
    equal("what was written", await view.rows(".report table"), written);
    await view.compare("Verify", await json("verify"));
    equal("the report stays", await view.rows(".report table"), written);
  },

  async "the report is a file of each form"(t) {
    const { page, view, json } = await open(t);
    await view.compare("Plan", await json("plan"));
    await view.agreeWith("yes");
    await soonHas("verdict", () => page.text(".report .verdict"), "Done");
    const downloads = await t.downloads(page);
    const report = async (label) => {
      await page.click("button", "Download the report");
      await page.click("[role=menuitem]", label);
      return downloads.next();
    };
    const asJson = await report("JSON");
    const found = JSON.parse(asJson.bytes);
    equal("report", { schema: found.schema, done: found.done, station: found.station },
      { schema: { name: "mxtool.apply-report", version: 1 }, done: true, station: "Pump house" });
    equal("parameters", found.modules.flatMap((one) => one.parameters).map((one) => `${one.name}: ${one.before}, ${one.now}`), [
      "Mains suppression: 50 Hz, 60 Hz", "AI 1/Signal range: ±10 V, 4-20 mA", "AI 1/Upper limit: 9.5 V, 9.9 V",
      "AI 2/Signal range: 0-10 V, 4-20 mA",
    ]);
    isTrue("a page", (await report("HTML, for people")).bytes.toString().startsWith("<!DOCTYPE html>"));
    isTrue("a text", (await report("Text")).bytes.includes(found.verdict));
    isTrue(`a name that ends in .json: ${asJson.name}`, asJson.name.endsWith(".json"));
  },

  async "what is not saved is compared, and not written"(t) {
    const { page, view, json, workplace } = await open(t, { route: "#/station" });
    const text = workplace.read(station).replace("60 Hz", "50 Hz");
    await page.fill(await page.find("field", "Text of the station, YAML"), text, "");
    await soon("state of the file", () => page.text(".file-state .badge"), "Not saved");
    await page.click("link", "Online");
    const saved = await json("plan");
    const levels = saved.modules[1];
    const expected = { ...saved, modules: [{ ...levels, parameters: levels.parameters.filter((one) => one.name !== "Mains suppression") }] };
    await view.compare("Plan", expected);
    await soonHas("reason", () => view.hindrance(), "Save the station");
    await page.press("Control+KeyS");
    await soon("state of the file", () => page.text(".file-state .badge"), "Saved");
    await soon("reason", () => view.hindrance(), "");
    await view.agreeWith("yes");
    await soonHas("verdict", () => page.text(".report .verdict"), "3 parameters changed");
  },

  async "a plan of an older text is not written"(t) {
    const { page, view, json, workplace } = await open(t);
    await view.compare("Plan", await json("plan"));
    await soon("reason", () => view.hindrance(), "");
    await page.click("link", "Station");
    await page.fill(await page.find("field", "Text of the station, YAML"), workplace.read(station).replace("9.9 V", "9.8 V"), "");
    await page.press("Control+KeyS");
    await soon("state of the file", () => page.text(".file-state .badge"), "Saved");
    await page.click("link", "Online");
    await soonHas("reason", () => view.hindrance(), "plan again");
    await soonHas("note", () => page.text(".compare"), "This is of another text than the station has now.");
  },

  async "other modules on the coupler are named, and nothing is written"(t) {
    const { page, view, asked } = await open(t, { faults: ["identity=2:5a020208"] });
    const { code, err } = await asked("plan");
    equal("exit code of the command line", code, 4);
    await page.click("button", "Plan", ".online");
    await soonHas("module", () => page.text(".difference table"), "another module: 5a020208");
    await soonHas("reason", () => view.hindrance(), "The coupler has other modules.");
    const [, said] = /error: ([^\n]*5a020208[^\n]*)/.exec(err) ?? [null, err];
    const shown = await page.text(".compare .findings");
    isTrue(`the page says what mxtool says: ${said}; it says: ${shown}`, shown.split("\n").some((one) => one !== "" && said.includes(one) && one.includes("5a020208")));
  },

  async "a parameter that the coupler refuses is in the report"(t) {
    const { page, view, json } = await open(t, { faults: ["stuck=Levels/AI 1/Upper limit"] });
    await view.compare("Plan", await json("plan"));
    await view.agreeWith("yes");
    await soon("verdict", () => page.text(".report .verdict"), "NOT DONE: 1 parameter is not as planned");
    const [wrong] = (await view.rows(".report table")).filter((row) => row[1] === "AI 1/Upper limit");
    equal("values", wrong.slice(3, 6), ["9.5 V", "9.9 V", "9.5 V"]);
    isTrue(`it is not called verified: ${wrong[6]}`, wrong[6] !== "verified");
    equal("it is marked", await page.texts(".report tr.wrong th"), ["AI 1/Upper limit"]);
  },

  async "live values are those that the command line reads"(t) {
    const { page, view, coupler, json } = await open(t);
    await coupler.set("LT_101", "4711");
    await coupler.set("P_102_fault", "1");
    await page.click("button", "Read live values");
    const asText = ({ values }) => Object.fromEntries(Object.entries(values).map(([name, value]) => [name, String(value)]));
    const expected = asText(await json("watch", "--once"));
    equal("a value that was set", expected.LT_101, "4711");
    await soon("values", () => view.values(), expected);
    await coupler.set("LT_101", "4712");
    await soon("values", () => view.values(), { ...expected, LT_101: "4712" });
    await page.click("button", "Stop");
    await soon("values", () => view.values(), {});
  },

  async "times are those of the clock of the person, as stated in the title"(t) {
    const { page, view, json } = await open(t);
    await page.page.emulateTimezone("Asia/Kolkata"); // 5 h 30 min before UTC, no summer time
    await page.evaluate(() => {
      // A day later for the page from here on: what is stated is of yesterday.
      const dayMs = 86_400_000;
      const Now = Date;
      window.setLater = () => {
        window.Date = class extends Now {
          constructor(...given) {
            super(...(given.length === 0 ? [Now.now() + dayMs] : given));
          }
        };
      };
    });
    const local = (iso) => new Date(Date.parse(iso) + 19_800_000).toISOString();
    await page.click("button", "Read live values");
    const shown = () => page.evaluate(() => {
      const time = document.querySelector(".live-values time");
      return [time.title, time.innerText];
    });
    const [iso, text] = await untilMet("time of the sample", shown, ([title]) => /^\d{4}-.*Z$/.test(title), "a time");
    equal("time of day", text, local(iso).slice(11, 19));
    await page.evaluate(() => window.setLater());
    await view.compare("Plan", await json("plan"));
    await view.agreeWith("yes");
    await page.page.waitForSelector(".report time");
    const [begun, said] = await page.evaluate(() => [".report time"].map((one) => document.querySelector(one)).flatMap((one) => [one.title, one.innerText]));
    equal("day and time", said, `${local(begun).slice(0, 10)} ${local(begun).slice(11, 19)}`);
  },

  async "live values of chosen channels alone"(t) {
    const { page, view, json } = await open(t);
    await page.fillField("Modules and channels", "Levels", "Enter");
    await page.fillField("Modules and channels", "P_101", "Enter");
    await page.click("button", "Read live values");
    const names = Object.keys((await json("watch", "--once", "Levels", "P_101")).values);
    equal("channels of the module and one more", names.length, 5);
    await soon("channels", async () => Object.keys(await view.values()).sort(), names.sort());
  },

  async "live values that another page began are said to be of that page"(t) {
    const { page, view, server } = await open(t);
    const other = await t.open(server, { route: "#/online" });
    const isOther = async (one) => (await one.text(".live-values")).includes("Another page began to read these channels.");
    await page.fillField("Modules and channels", "Levels", "Enter");
    await page.click("button", "Read live values");
    const there = new OnlineView(other);
    for (const one of [view, there]) {
      await untilMet("values", () => one.values(), (found) => Object.keys(found).length === 4, "four channels");
    }
    await soon("the other page says so", () => isOther(other), true);
    equal("the page that began says nothing", await isOther(page), false);
    await page.page.reload();
    await untilMet("values after a reload", () => view.values(), (found) => Object.keys(found).length === 4, "four channels");
    equal("the page that began still knows it", await isOther(page), false);
    await other.click("button", "Read these");
    await soon("the first page says so", () => isOther(page), true);
    await soon("the other page no longer", () => isOther(other), false);
  },

  async "a channel that there is not is refused by name"(t) {
    t.allow(/status of 4\d\d/);
    const { page } = await open(t);
    await page.fillField("Modules and channels", "P_1001", "Enter");
    await page.click("button", "Read live values");
    await soonHas("reason", () => page.text(".online .findings"), "P_1001");
  },

  async "a lost coupler is shown within three seconds, and so is its return"(t) {
    const { page, view, coupler, workplace } = await open(t);
    await page.click("button", "Read live values");
    await untilMet("values", () => view.values(), (found) => Object.keys(found).length > 0, "some");
    await coupler.end("SIGKILL");
    const lost = Date.now();
    await soon("state", () => view.badge(), "Target: failed", lostMs);
    await soonHas("state in words", () => page.text(".online .totals"), "did not answer the last request", Math.max(lostMs - (Date.now() - lost), 1));
    await soonHas("age of the values", () => page.text(".live-values"), "Not live");
    await t.couplerAgain(workplace, coupler, station);
    await soon("state", () => view.badge(), "Target: connected");
    await soon("old values are not called live", () => page.has(".stale-values"), false);
  },
};
