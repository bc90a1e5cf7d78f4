// Who may use the page: whoever has the address of this run, from this computer alone.
"use strict";

const { equal, isTrue, soon, soonHas } = require("../harness/expected.cjs");
const { OtherSite } = require("../harness/other-site.cjs");

const station = "stations/pump-house.yaml";
const call = [station, "--folder", ".", "--db", "sqlite:catalogue.sqlite"];
const opened = "mxtool serve, or has no token. Open the address that the running program printed as its first line.";

async function openOtherSite(t) {
  const site = await OtherSite.start();
  t.ends.push(() => site.end());
  return { site, page: await t.open({ address: `${site.origin}/` }) };
}

/** The requests of the API that the browser has sent so far. */
function apiCalls(t) {
  return t.watch.requests.filter(({ url }) => url.includes("/api/"));
}

async function showsNothing(page) {
  await soonHas("what to do", () => page.text(".server-state"), opened);
  equal("name of the file", await page.text(".file-name"), "");
  equal("view: its heading alone", await page.text("main"), "mxtool workbench");
}

module.exports = {
  async "the token leaves the address bar, and is sent as a header alone"(t) {
    const server = await t.sharedServer(...call);
    const page = await t.open(server);
    await page.heading("Pump house");
    equal("address", await page.evaluate(() => location.href), `${server.origin}/`);
    await page.click("link", "Catalogue");
    await page.heading("Catalogue");
    equal("address", await page.evaluate(() => location.href), `${server.origin}/#/catalogue`);
    const calls = apiCalls(t);
    isTrue("calls were made", calls.length > 2);
    equal("calls without the token", calls.filter(({ headers }) => headers.authorization !== `Bearer ${server.token}`), []);
    const inside = t.watch.requests.filter(({ url, headers, body }) => url.split("#")[0].includes(server.token) || body.includes(server.token)
      || Object.entries(headers).some(([name, value]) => name !== "authorization" && value.includes(server.token)));
    equal("requests with the token elsewhere", inside, []);
    equal("referrers", t.watch.requests.map(({ headers }) => headers.referer ?? "").filter((one) => one !== ""), []);
  },

  async "no cookie and nothing that stays is kept"(t) {
    const page = await t.open(await t.sharedServer(...call));
    await page.heading("Pump house");
    equal("kept", await page.evaluate(() => [document.cookie, localStorage.getItem("mxtool-workbench-token")]), ["", null]);
    equal("cookies", (await page.page.browserContext().cookies()).length, 0);
    equal("the token in what stays", await page.evaluate(() => JSON.stringify(localStorage).length < 100), true);
  },

  async "the way back does not have the token"(t) {
    const server = await t.sharedServer(...call);
    const page = await t.open(server);
    await page.heading("Pump house");
    await page.click("link", "Catalogue");
    await page.heading("Catalogue");
    await page.page.goBack();
    await page.heading("Pump house");
    equal("address", await page.evaluate(() => location.href), `${server.origin}/`);
  },

  async "a reload keeps the token, another tab does not have it"(t) {
    const server = await t.sharedServer(...call);
    const page = await t.open(server);
    await page.heading("Pump house");
    await page.page.reload();
    await page.heading("Pump house");
    const other = await t.open(server, { context: page.page.browserContext(), address: `${server.origin}/` });
    await showsNothing(other);
  },

  async "without a token nothing is shown or asked for"(t) {
    const server = await t.sharedServer(...call);
    const page = await t.open(server, { address: `${server.origin}/#/station` });
    await showsNothing(page);
    equal("calls", apiCalls(t), []);
  },

  async "a wrong token shows nothing and says what to do"(t) {
    t.allow(/status of 401/);
    const server = await t.sharedServer(...call);
    const wrong = server.token.replace(/^./, (one) => (one === "A" ? "B" : "A"));
    const page = await t.open(server, { address: `${server.origin}/#${wrong}` });
    await showsNothing(page);
  },

  async "an address with another token, opened in the same tab, is the one that counts"(t) {
    t.allow(/status of 401/);
    const server = await t.sharedServer(...call);
    const page = await t.open(server, { address: `${server.origin}/#wrong` });
    await showsNothing(page);
    await page.go(`#${server.token}`);
    await page.heading("Pump house");
    equal("address", await page.evaluate(() => location.href), `${server.origin}/`);
  },

  async "the page of an earlier run shows what it has, and says what to do"(t) {
    t.allow(/status of 401|ERR_CONNECTION|ERR_EMPTY/);
    const workplace = t.workplace();
    const first = await t.server(workplace, ...call);
    const page = await t.open(first);
    await page.heading("Pump house");
    await first.end("SIGKILL");
    const second = await t.serverAgain(workplace, first, ...call);
    await soonHas("what to do", () => page.text(".server-state"), opened);
    equal("view", await page.text("main h1"), "Pump house");
    await page.go(`#${second.token}`);
    await soon("state", () => page.text(".server-state"), "");
    await page.heading("Pump house");
  },

  async "every view asks this server alone"(t) {
    const server = await t.sharedServer(...call);
    const page = await t.open(server);
    await page.heading("Pump house");
    for (const [link, heading] of [["Catalogue", "Catalogue"], ["4 AI ±10 V / 0-20 mA", "4 AI ±10 V / 0-20 mA"], ["Station", "Pump house"]]) {
      await page.click("link", link);
      await page.heading(heading);
    }
    const origins = new Set(t.watch.requests.map(({ url }) => new URL(url)).map((url) => (url.protocol === "http:" ? url.origin : url.protocol)));
    origins.delete("data:");
    origins.delete("blob:");
    equal("asked", [...origins], [server.origin]);
  },

  async "the policy stops scripts, markup and addresses that the page does not have itself"(t) {
    t.allow(/CSP|Content Security Policy|TrustedHTML|TrustedScript/);
    const page = await t.open(await t.sharedServer(...call));
    await page.heading("Pump house");
    const { site } = await openOtherSite(t);
    const before = site.requests.length;
    const isFetched = await page.evaluate((elsewhere) => {
      window.stopped = [];
      addEventListener("securitypolicyviolation", (event) => window.stopped.push(event.effectiveDirective));
      const add = (name, values) => document.body.append(Object.assign(document.createElement(name), values));
      const attempt = (one) => { try { one(); } catch { window.stopped.push("thrown"); } };
      attempt(() => add("script", { textContent: "window.ran = true" }));
      attempt(() => { document.createElement("div").innerHTML = "<b>markup</b>"; });
      add("img", { src: `${elsewhere}/image.png` });
      add("link", { rel: "stylesheet", href: `${elsewhere}/style.css` });
      add("iframe", { src: `${elsewhere}/frame` });
      return fetch(`${elsewhere}/data`).then(() => true, () => false);
    }, site.origin);
    const expected = ["connect-src", "frame-src", "img-src", "require-trusted-types-for", "style-src-elem", "thrown"];
    await soon("stopped", () => page.evaluate(() => [...new Set(window.stopped)].sort()), expected);
    equal("did a script run, was something fetched", [await page.evaluate(() => "ran" in window), isFetched], [false, false]);
    equal("requests elsewhere", site.requests.slice(before), []);
  },

  async "a page of another origin reads nothing, whatever it knows"(t) {
    t.allow(/CORS|status of 403|ERR_FAILED|ERR_BLOCKED|X-Frame-Options|frame-ancestors|refused to connect|Refused to/i);
    const workplace = t.workplace();
    const before = workplace.read(station);
    const server = await t.server(workplace, ...call);
    const { page } = await openOtherSite(t);
    const found = await page.evaluate(async (origin, token) => {
      const asked = (path, options) => fetch(`${origin}${path}`, options).then((one) => one.type, () => "failed");
      const element = (name, values) => new Promise((done) => {
        const one = document.createElement(name);
        one.onload = () => done("loaded");
        one.onerror = () => done("failed");
        Object.assign(one, values);
        document.body.append(one);
      });
      const headers = { Authorization: `Bearer ${token}` };
      const text = JSON.stringify({ text: "station: overwritten\n", from: "" });
      return {
        page: await asked("/"),
        start: await asked("/api/v1/start", { headers }),
        save: await asked("/api/v1/file", { method: "PUT", headers, body: text }),
        simple: await asked("/api/v1/station", { method: "POST", mode: "no-cors", body: text }),
        script: await element("script", { src: `${origin}/workbench.js` }),
        image: await element("img", { src: `${origin}/icon.svg` }),
      };
    }, server.origin, server.token);
    equal("what another origin gets", found,
      { page: "failed", start: "failed", save: "failed", simple: "failed", script: "failed", image: "failed" });
    equal("file", workplace.read(station), before);
  },

  async "a page of another origin cannot show the page in a frame"(t) {
    t.allow(/X-Frame-Options|frame-ancestors|refused to connect|status of 403|ERR_BLOCKED|Refused to/i);
    const server = await t.sharedServer(...call);
    const { page } = await openOtherSite(t);
    await page.evaluate((address) => new Promise((done) => {
      const frame = document.createElement("iframe");
      frame.onload = done;
      frame.src = address;
      document.body.append(frame);
    }), server.address);
    const shown = await Promise.all(page.page.frames().slice(1).map((one) => one.evaluate(() => document.body?.innerText ?? "").catch(() => "")));
    equal("frames with the page", shown.filter((one) => one.includes("mxtool workbench") || one.includes("Pump house")), []);
    equal("calls", apiCalls(t), []);
  },
};
