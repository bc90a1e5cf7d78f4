// A page of the browser whose requests, messages and dialogs are watched: what should not happen fails its case.
"use strict";

const { isHere } = require("./browser.cjs");

// Runs in the page before anything of it.
function reportViolations() {
  addEventListener("securitypolicyviolation", (event) => {
    console.error(`CSP: ${event.violatedDirective} ${event.blockedURI}`);
  });
}

class Watch {
  constructor() {
    this.faults = [];
    this.requests = [];
    this.allowed = [];
  }

  /** Messages of the console that the case expects, such as that of a refused call. */
  allow(pattern) {
    this.allowed.push(pattern);
  }

  fault(text) {
    if (!this.allowed.some((one) => one.test(text))) {
      this.faults.push(text);
    }
  }

  follow(page) {
    page.on("request", (request) => {
      this.requests.push({ url: request.url(), headers: request.headers(), body: request.postData() ?? "" });
      if (!isHere(request.url())) {
        this.faults.push(`request to ${request.url()}`);
      }
    });
    page.on("console", (message) => {
      if (["error", "warn"].includes(message.type())) {
        this.fault(`console: ${message.text()} ${message.location().url ?? ""}`);
      }
    });
    page.on("pageerror", (error) => this.fault(`error in the page: ${error.stack ?? error}`));
    page.on("dialog", (dialog) => {
      if (dialog.type() !== "beforeunload") {
        this.faults.push(`dialog of ${dialog.type()}: ${dialog.message()}`);
      }
      dialog.accept().catch(() => undefined);
    });
    page.on("popup", (popup) => this.faults.push(`opened ${popup?.url()}`));
    return page.evaluateOnNewDocument(reportViolations);
  }
}

module.exports = { Watch };
