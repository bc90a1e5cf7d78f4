// What a case works with: its folder, its servers and pages. All of it ends with the case.
"use strict";

const fs = require("fs");
const path = require("path");
const { Downloads } = require("./downloads.cjs");
const { Page } = require("./page.cjs");
const { Coupler, Server } = require("./programs.cjs");
const { Watch } = require("./watched-page.cjs");
const { Workplace } = require("./workplace.cjs");

const endMs = 5_000;
const pause = (ms) => new Promise((done) => setTimeout(done, ms).unref());

class Case {
  constructor(run, name) {
    this.run = run;
    this.name = name;
    this.watch = new Watch();
    this.pages = [];
    this.ends = [];
  }

  /** A folder of its own, for a case that writes. */
  workplace() {
    const folder = fs.mkdtempSync(path.join(this.run.folder, "case-"));
    fs.cpSync(this.run.template, folder, { recursive: true });
    this.ends.push(() => fs.rmSync(folder, { recursive: true, force: true }));
    return new Workplace(folder);
  }

  /** The folder of all cases that write nothing. */
  get shared() {
    return new Workplace(this.run.template);
  }

  async server(workplace, ...call) {
    const server = await Server.start(workplace.folder, call);
    this.ends.push(() => server.end("SIGKILL"));
    return server;
  }

  /** A server at the address where another one was that has ended. */
  async serverAgain(workplace, before, ...call) {
    const server = await Server.start(workplace.folder, call, before.port);
    this.ends.push(() => server.end("SIGKILL"));
    return server;
  }

  /** A server that cases share: one for each call. */
  async sharedServer(...call) {
    const key = call.join(" ");
    if (!this.run.servers.has(key)) {
      this.run.servers.set(key, Server.start(this.run.template, call));
    }
    return this.run.servers.get(key);
  }

  async coupler(workplace, ...call) {
    const coupler = await Coupler.start(workplace.folder, call);
    this.ends.push(() => coupler.end("SIGKILL"));
    return coupler;
  }

  /** A coupler where another one was that has ended. */
  async couplerAgain(workplace, before, ...call) {
    const coupler = await Coupler.start(workplace.folder, call, before.target.split(":").pop());
    this.ends.push(() => coupler.end("SIGKILL"));
    return coupler;
  }

  async context() {
    const context = await this.run.browser.createBrowserContext();
    this.ends.push(() => context.close());
    return context;
  }

  /** An empty page that is watched. */
  async tab({ context, scheme, viewport } = {}) {
    const within = context ?? await this.context();
    const tab = await within.newPage();
    await this.watch.follow(tab);
    if (scheme !== undefined) {
      await tab.emulateMediaFeatures([{ name: "prefers-color-scheme", value: scheme }]);
    }
    if (viewport !== undefined) {
      await tab.setViewport(viewport);
    }
    return tab;
  }

  /** A page of no server. */
  async blank(options) {
    const page = new Page(await this.tab(options));
    this.pages.push(page);
    return page;
  }

  /** Opens the page of a server in a context of its own; `route` such as "#/catalogue". */
  async open(server, options = {}) {
    const page = await Page.open(await this.tab(options), options.address ?? server.address);
    this.pages.push(page);
    if (options.route !== undefined) {
      await page.go(options.route);
    }
    return page;
  }

  async downloads(page) {
    const context = page.page.browserContext();
    const downloads = await Downloads.begin(this.run.browser, context, fs.mkdtempSync(path.join(this.run.folder, "downloads-")));
    this.ends.push(() => downloads.end());
    return downloads;
  }

  /** Messages of the browser's console that this case causes. */
  allow(pattern) {
    this.watch.allow(pattern);
  }

  /** Ends what the case began; what does not end in time is left to the end of the run. */
  async end() {
    for (const end of this.ends.reverse()) {
      await Promise.race([Promise.resolve().then(end).catch(() => undefined), pause(endMs)]);
    }
  }
}

module.exports = { Case };
