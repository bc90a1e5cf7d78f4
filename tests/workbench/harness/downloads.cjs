// Files that the page gives to the browser.
"use strict";

const fs = require("fs");
const path = require("path");

// Chromium drops what a page gives it beyond ten files in a second.
const mostInASecond = 10;

class Downloads {
  static async begin(browser, context, folder) {
    const downloads = new Downloads();
    fs.mkdirSync(folder, { recursive: true });
    downloads.folder = folder;
    downloads.names = new Map();
    downloads.done = [];
    downloads.waiting = [];
    downloads.times = [];
    downloads.session = await browser.target().createCDPSession();
    downloads.session.on("Browser.downloadWillBegin", ({ guid, suggestedFilename }) => {
      downloads.names.set(guid, suggestedFilename);
    });
    downloads.session.on("Browser.downloadProgress", ({ guid, state }) => {
      if (state === "completed" && downloads.names.has(guid)) {
        downloads.take(guid);
      }
    });
    await downloads.session.send("Browser.setDownloadBehavior", {
      behavior: "allowAndName", browserContextId: context.id, downloadPath: folder, eventsEnabled: true,
    });
    return downloads;
  }

  take(guid) {
    const file = { name: this.names.get(guid), bytes: fs.readFileSync(path.join(this.folder, guid)) };
    const next = this.waiting.shift();
    if (next === undefined) {
      this.done.push(file);
    } else {
      next(file);
    }
  }

  /** The next file, with the name that the page gave it; then Chromium takes another one. */
  async next() {
    const file = this.done.shift() ?? await new Promise((done) => this.waiting.push(done));
    this.times.push(Date.now());
    const [first] = this.times.slice(-mostInASecond);
    if (this.times.length >= mostInASecond) {
      await new Promise((done) => setTimeout(done, Math.max(0, first + 1_000 - Date.now())));
    }
    return file;
  }

  end() {
    return this.session.detach();
  }
}

module.exports = { Downloads };
