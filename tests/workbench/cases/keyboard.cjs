// The page without a mouse.
"use strict";

const { equal, isTrue, soon, soonHas } = require("../harness/expected.cjs");
const { StationView } = require("../harness/station-view.cjs");
const { ModuleView, configured } = require("../harness/module-view.cjs");

const file = "stations/pump-house.yaml";
const call = [file, "--folder", "."];

/** Whether a person sees where the focus is: by an outline, a border or a shadow that it alone has. */
function isFocusSeen(page) {
  return page.evaluate(() => {
    const seen = (one) => {
      const style = getComputedStyle(one);
      return (style.outlineStyle !== "none" && parseFloat(style.outlineWidth) >= 1) || style.boxShadow !== "none";
    };
    const { activeElement: one } = document;
    const frame = one.closest(".yaml-scroll"); // the text is larger than what is seen of it
    return [one, one.parentElement, one.nextElementSibling, frame].some((place) => place !== null && place !== document.documentElement && seen(place))
      || one === document.body;
  });
}

async function isWithinDialog(page) {
  return page.evaluate(() => document.activeElement === document.body || document.activeElement.closest("dialog") !== null);
}

module.exports = {
  async "a whole job: open, change a value, add a module, move it, save"(t) {
    const workplace = t.workplace();
    const page = await t.open(await t.server(workplace, ...call));
    const view = await StationView.on(page);
    await page.reach("Add module …");
    await page.press("Enter");
    await soon("dialog", () => page.dialog(), "Add a module");
    await page.keyboard.type("MX0204.yaml");
    await page.reach("4 DO relay 230 V AC 2 A ../modules/MX0204.yaml");
    await page.press("Enter");
    await soon("entries", () => view.names(), ["MX0116", "MX0204", "Levels", "flow meter", "Pumps"]);
    await soon("the dialog gives the focus back", () => page.focused(), "Add module …");
    const card = () => page.evaluate(() => document.activeElement.classList.contains("entry-card"));
    for (let count = 0; count < 40 && !(await card()); ++count) {
      await page.press("Tab");
    }
    await page.press("Alt+ArrowRight");
    await soon("entries", () => view.names(), ["MX0116", "Levels", "MX0204", "flow meter", "Pumps"]);
    await page.press("ArrowLeft");
    await soon("selected", () => view.selected(), "Levels");
    await page.page.waitForSelector(view.module.field("19"));
    await page.reach("Mains suppression");
    await page.press("Control+KeyA");
    await page.keyboard.type("30");
    await page.press("Enter");
    await view.textHas("Mains suppression: 30");
    await page.press("Control+KeyS");
    await soon("state", () => view.saveState(), "Saved");
    const { modules } = await workplace.json("station", "show", file);
    equal("modules of the file", modules.map((one) => one.name), ["MX0116", "Levels", "MX0204", "Pumps"]);
    const images = await workplace.json("station", "config", file);
    isTrue("value of the file", images.modules[1].bytes.startsWith("1e "));
  },

  async "a whole job with a coupler: reserve, pin, save, plan, apply"(t) {
    const workplace = t.workplace();
    const coupler = await t.coupler(workplace, file);
    const page = await t.open(await t.server(workplace, ...call, "--target", coupler.target));
    const view = await StationView.on(page);
    await page.reach("Reserve bytes …");
    await page.press("Enter");
    await soon("focus", () => page.focused(), "Input bytes");
    await page.keyboard.type("2");
    await page.reach("Name (may be empty)");
    await page.keyboard.type("doors");
    await page.press("Enter");
    await soon("entries", () => view.names(), ["MX0116", "doors", "Levels", "flow meter", "Pumps"]);
    await soon("the dialog gives the focus back", () => page.focused(), "Reserve bytes …");
    await page.reach("Selected: doors");
    await page.press("Enter");
    await soon("focus", () => page.focused(), "Move before");
    await page.reach("Pin to addresses …", "ArrowDown");
    await page.press("Enter");
    await soon("dialog", () => page.dialog(), "Pin doors");
    await page.reach("Pin");
    await page.press("Enter");
    await view.textHas("at: {in: 2}");
    await soon("the dialog gives the focus back", () => page.focused(), "Selected: doors");
    await page.press("Control+KeyS");
    await soon("state", () => view.saveState(), "Saved");
    const { gaps } = await workplace.json("station", "show", file);
    equal("reserved in the file", gaps.filter((one) => one.name === "doors").map((one) => [one.image, one.offset, one.size]), [["in", 2, 2]]);

    const asked = (verb) => workplace.run("station", verb, file, "--target", coupler.target);
    equal("before: exit code of verify", (await asked("verify")).code, 1);
    await page.reach("Online", "Shift+Tab");
    await page.press("Enter");
    await page.heading("Online");
    await page.reach("Plan");
    await page.press("Enter");
    await soonHas("what differs", () => page.text(".difference"), "4 parameters differ");
    await soon("what hinders", () => page.text("#apply-reason"), "");
    await page.reach("Apply …");
    await page.press("Enter");
    await soon("focus", () => page.focused(), "Type \"yes\" to write");
    await page.keyboard.type("yes");
    await page.press("Enter");
    await soonHas("verdict", () => page.text(".report .verdict"), "Done");
    equal("after: exit code of verify", (await asked("verify")).code, 0);
  },

  async "the focus is seen at every stop"(t) {
    const page = await t.open(await t.sharedServer(...call));
    await StationView.on(page);
    await soonHas("selected module", () => page.text("[role=tabpanel]"), "Input filter");
    const stops = [];
    const unseen = [];
    for (let count = 0; count < 80; ++count) {
      await page.press("Tab");
      stops.push(await page.focused());
      if (!(await isFocusSeen(page))) {
        unseen.push(stops.at(-1));
      }
    }
    equal("stops without a visible focus", unseen, []);
    isTrue("the text is one of them", stops.includes("Text of the station, YAML"));
  },

  async "the first stop leads to the content"(t) {
    const page = await t.open(await t.sharedServer(...call));
    await StationView.on(page);
    await soonHas("selected module", () => page.text("[role=tabpanel]"), "Input filter");
    await page.evaluate(() => new Promise((done) => requestAnimationFrame(() => setTimeout(done, 100)))); // all is drawn
    await page.press("Tab");
    equal("first stop", await page.focused(), "Skip to the content");
    await page.press("Enter");
    equal("focus", await page.evaluate(() => document.activeElement.tagName), "MAIN");
  },

  async "dialogs keep the focus, and give it back"(t) {
    const page = await t.open(await t.sharedServer(...call));
    await StationView.on(page);
    for (const button of ["Add module …", "Reserve bytes …", "Export …"]) {
      await (await page.find("button", button)).focus();
      await page.press("Enter");
      await soonHas("dialog", () => page.dialog(), /./);
      for (let count = 0; count < 12; ++count) {
        await page.press(count < 8 ? "Tab" : "Shift+Tab");
        isTrue(`the focus stays in the dialog of ${button}`, await isWithinDialog(page));
      }
      await page.press("Escape");
      await soon("dialog", () => page.dialog(), "");
      await soon("focus", () => page.focused(), button);
    }
  },

  async "a menu is used by arrows, Enter and Escape"(t) {
    const page = await t.open(await t.sharedServer(...call));
    const view = await StationView.on(page);
    const menu = await page.find("button", "Selected: MX0116", "[role=group][aria-label=Actions]");
    await menu.focus();
    await page.press("Enter");
    await soon("focus", () => page.focused(), "Move before");
    await page.press("Escape");
    await soon("focus", () => page.focused(), "Selected: MX0116");
    await page.press("Enter");
    await soon("focus", () => page.focused(), "Move before");
    equal("name of the menu", await page.evaluate(() => document.querySelector("[role=menu]").getAttribute("aria-label")), "Selected: MX0116");
    await page.press("ArrowDown");
    await soon("focus", () => page.focused(), "Move after");
    await page.press("Enter");
    await soon("entries", () => view.names(), ["Levels", "MX0116", "flow meter", "Pumps"]);
  },

  async "tabs are changed by arrows"(t) {
    const page = await t.open(await t.sharedServer(...call));
    await StationView.on(page);
    await (await page.find("tab", "Selected module")).focus();
    for (const name of ["Its channels", "Process images", "All channels", "Selected module"]) {
      await page.press("ArrowRight");
      await soon("chosen tab", () => page.text("[role=tab][aria-selected=true]"), name);
      equal("focus", await page.focused(), name);
    }
  },

  async "the keys are listed, and Escape closes the list"(t) {
    const page = await t.open(await t.sharedServer(...call));
    await StationView.on(page);
    await (await page.find("button", "Pin all")).focus();
    await page.keyboard.press("?");
    await soon("dialog", () => page.dialog(), "Keys");
    const listed = await page.texts("dialog kbd");
    isTrue("keys of the view are among them", ["Ctrl+S", "Ctrl+Z", "Alt"].every((key) => listed.some((one) => one.includes(key))));
    await page.press("Escape");
    await soon("focus", () => page.focused(), "Pin all");
  },

  async "bytes are reached by one Tab and arrows, and lead to their fields"(t) {
    const page = await t.open(await t.sharedServer("modules/MX0304.bin"));
    const view = new ModuleView(page);
    const { raw } = await configured(t.shared, "modules/MX0304.bin", {});
    await soon("bytes", () => view.bytes("raw"), raw.bytes);
    await (await page.page.$("[aria-label=\"Parameter image\"] [data-byte=\"0\"]")).focus();
    await page.press("ArrowRight");
    await page.press("ArrowDown");
    const columns = await page.evaluate(() => document.querySelector("[aria-label=\"Parameter image\"] tbody tr").querySelectorAll("[data-byte]").length);
    const at = 1 + columns;
    equal("byte", await page.evaluate(() => document.activeElement.dataset.byte), String(at));
    const holders = raw.parameters.filter((one) => one.byte <= at && at < one.byte + one.size).map((one) => one.id);
    await soon("lit fields", () => view.fields("lit"), holders);
    await page.press("Enter");
    await soon("field", () => page.evaluate(() => document.activeElement.closest("[data-parameter]")?.dataset.parameter), holders[0]);
  },
};
