// axe and html-validate on each view and dialog: light on a wide screen, dark on a narrow one. With
// EVERY_SCREEN=1 also light on a narrow and dark on a wide one.
"use strict";

const { equal, soon, soonHas } = require("../harness/expected.cjs");
const { documentOf, hasNoViolation, isValid } = require("../harness/accessibility.cjs");
const { StationView } = require("../harness/station-view.cjs");

const file = "stations/pump-house.yaml";
const ofStation = [file, "--folder", ".", "--db", "sqlite:catalogue.sqlite"];
const wide = { width: 1280, height: 900 };
const narrow = { width: 360, height: 740 };
const two = [{ scheme: "light", viewport: wide }, { scheme: "dark", viewport: narrow }];
const other = [{ scheme: "light", viewport: narrow }, { scheme: "dark", viewport: wide }];
const screens = process.env.EVERY_SCREEN === undefined ? two : [...two, ...other];

async function check(page, where) {
  const [width, screen] = await page.evaluate(() => [document.documentElement.scrollWidth, document.documentElement.clientWidth]);
  equal(`width of ${where}, on a screen of ${screen}`, Math.min(width, screen), width);
  await hasNoViolation(page, where);
  await isValid(await documentOf(page), where);
}

/** Checks what `show` brings onto the page, step by step, on each screen. */
async function onScreens(t, call, steps) {
  for (const screen of screens) {
    const page = await t.open(await t.sharedServer(...call), screen);
    for (const [name, show] of Object.entries(steps)) {
      await show(page);
      await check(page, `${name}, ${screen.scheme}, ${screen.viewport.width}`);
    }
  }
}

const tab = (name, has) => async (page) => {
  await page.click("tab", name);
  await soonHas(`panel of ${name}`, () => page.text("[role=tabpanel]"), has);
};

const dialog = (button, title) => async (page) => {
  await page.press("Escape");
  await page.click("button", button, "main");
  await soonHas("dialog", () => page.dialog(), title);
};

module.exports = {
  async "catalogue, with conditions and findings"(t) {
    t.allow(/status of 422/);
    await onScreens(t, ofStation, {
      "catalogue": async (page) => {
        await page.go("#/catalogue");
        await soonHas("count", () => page.text(".catalogue .count"), "38 modules");
      },
      "wrong condition": async (page) => {
        await page.fillField("Value", "many", "");
        await page.choose("Property", "in_bytes");
        await page.press("Tab");
        await page.click("button", "Add the condition");
        await soonHas("finding", () => page.text(".catalogue"), "expected");
      },
    });
  },

  async "module, each of its parts"(t) {
    await onScreens(t, ["modules/MX0304.bin"], {
      "parameters": (page) => soonHas("fields", () => page.text(), "Upper limit"),
      "refused value": async (page) => {
        const field = await page.page.waitForSelector("[data-parameter=\"21\"] input");
        await page.fill(field, "99");
        await soonHas("reason", () => page.text("[data-parameter=\"21\"]"), "expected a number");
      },
      "process image": tab("Process image", "AI 1"),
      "channels": tab("Channels", "AI 1"),
      "properties": tab("Properties", "brandVersion"),
      "bytes of the file": tab("Bytes of the file", "Group"),
    });
  },

  async "station, each of its parts"(t) {
    await onScreens(t, ofStation, {
      "row and selected module": (page) => StationView.on(page),
      "its channels": tab("Its channels", "DI 1"),
      "process images": tab("Process images", "Input"),
      "all channels": tab("All channels", "DI 1"),
    });
  },

  async "station, its dialogs"(t) {
    await onScreens(t, ofStation, {
      "add": async (page) => {
        await StationView.on(page);
        await dialog("Add module …", "Add a module")(page);
        await soonHas("modules", () => page.text("dialog"), "5a030304");
      },
      "reserve": dialog("Reserve bytes …", "Reserve bytes"),
      "export": dialog("Export …", "Export"),
      "keys": async (page) => {
        await page.press("Escape");
        await page.click("button", "Keys and shortcuts");
        await soon("dialog", () => page.dialog(), "Keys");
      },
      "menu": async (page) => {
        await page.press("Escape");
        await page.click("button", "Selected: MX0116", "[role=group][aria-label=Actions]");
      },
      "pin": async (page) => {
        await page.click("[role=menuitem]", "Pin to addresses …");
        await soonHas("dialog", () => page.dialog(), "Pin");
      },
    });
  },

  async "station with errors, and a file changed by another program"(t) {
    const workplace = t.workplace();
    const server = await t.server(workplace, file, "--folder", ".");
    for (const screen of screens) {
      const page = await t.open(server, screen);
      const view = await StationView.on(page);
      await view.type(`${workplace.read(file)}  - reserve: {in: many}\n`);
      await soonHas("finding", () => view.findings(), "error");
      await check(page, `errors, ${screen.scheme}`);
      workplace.write(file, `${workplace.read(file)}# another program, ${screen.scheme}\n`);
      await soonHas("dialog", () => page.dialog(), "changed by another program");
      await check(page, `changed file, ${screen.scheme}`);
    }
  },

  async "online: plan, question, report and live values"(t) {
    const workplace = t.workplace();
    for (const screen of screens) {
      const coupler = await t.coupler(workplace, file);
      const server = await t.server(workplace, file, "--folder", ".", "--target", coupler.target);
      const page = await t.open(server, { ...screen, route: "#/online" });
      await page.click("button", "Plan");
      await soonHas("plan", () => page.text(".difference"), "To write");
      await page.click("button", "Read live values");
      await soonHas("values", () => page.text(".live-values"), "LT_101");
      await check(page, `plan and live values, ${screen.scheme}`);
      await page.click("button", "Apply …");
      await soonHas("dialog", () => page.dialog(), "Write to");
      await check(page, `question, ${screen.scheme}`);
      await page.fillField("Type \"yes\" to write", "yes", "Enter", "dialog");
      await soonHas("report", () => page.text(".report .verdict"), "Done");
      await check(page, `report, ${screen.scheme}`);
    }
  },

  async "lost server, and a page of an earlier run"(t) {
    t.allow(/ERR_|status of 401/);
    const workplace = t.workplace();
    const server = await t.server(workplace, file, "--folder", ".");
    const page = await t.open(server, two[0]);
    await StationView.on(page);
    const stranger = await t.open(server, { ...two[1], address: `${server.origin}/` });
    await soonHas("advice", () => stranger.text(), "Open the address");
    await check(stranger, "page without a token");
    await server.end("SIGKILL");
    await soonHas("message", () => page.text(".server-state"), "The server does not answer.");
    await check(page, "lost server");
  },

  async "data sheets"(t) {
    const sheets = { module: "modules/MX0104.bin", station: "stations/smallest.yaml" };
    for (const [name, of] of Object.entries(sheets)) {
      const html = (await t.shared.output("datasheet", of, "-o", "-")).toString();
      await isValid(html, `data sheet of a ${name}`);
      for (const screen of two) {
        const page = await t.blank(screen);
        await page.page.setContent(html);
        await hasNoViolation(page, `data sheet of a ${name}, ${screen.scheme}`);
      }
    }
  },
};
