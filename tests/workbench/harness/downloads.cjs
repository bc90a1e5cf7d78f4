// Files that the page gives to the browser.
"use strict";

const fs = require("fs");
const path = require("path");
const { untilMet } = require("./expected.cjs");

// Chromium drops what a page gives it beyond ten files in a second.
const mostAtOnce = 10;
const periodMs = 1_000;

class Downloads {
  static async begin(browser, context, folder) {
    const downloads = new Downloads();
    fs.mkdirSync(folder, { recursive: true });
    downloads.folder = folder;
    downloads.all = new Map(); // name, size and state by identifier, in the order in which they began
    downloads.taken = 0;
    downloads.times = [];
    downloads.session = await browser.target().createCDPSession();
    downloads.session.on("Browser.downloadWillBegin", ({ guid, suggestedFilename }) => {
      downloads.all.set(guid, { guid, name: suggestedFilename, state: "begun", size: 0 });
    });
    downloads.session.on("Browser.downloadProgress", ({ guid, state, totalBytes }) => {
      Object.assign(downloads.all.get(guid) ?? {}, { state, size: totalBytes });
    });
    await downloads.session.send("Browser.setDownloadBehavior", {
      behavior: "allowAndName", browserContextId: context.id, downloadPath: folder, eventsEnabled: true,
    });
    return downloads;
  }

  /** The bytes of a file that is there as a whole; undefined: it is not yet. */
  bytesOf({ guid, state, size }) {
    const file = path.join(this.folder, guid);
    const isWhole = state === "completed" && fs.existsSync(file) && fs.statSync(file).size >= size;
    return isWhole ? fs.readFileSync(file) : undefined;
  }

  /** The next file, with the name that the page gave it. */
  async next() {
    const number = this.taken++;
    const states = () => [...this.all.values()].map((one) => `${one.name} ${one.state}`);
    await untilMet(`download ${number + 1} is done`, states, () => {
      const one = [...this.all.values()][number];
      return one !== undefined && this.bytesOf(one) !== undefined;
    }, "a whole file");
    await this.keepPace();
    const one = [...this.all.values()][number];
    return { name: one.name, bytes: this.bytesOf(one) };
  }

  /** Waits until Chromium takes another one. */
  async keepPace() {
    this.times.push(Date.now());
    const rest = (this.times.at(-mostAtOnce) ?? 0) + periodMs - Date.now();
    if (rest > 0) {
      await new Promise((done) => setTimeout(done, rest));
    }
  }

  end() {
    return this.session.detach();
  }
}

module.exports = { Downloads };
