// The view of a coupler: its state, what differs, what was written, live values.
"use strict";

const { soon } = require("./expected.cjs");

function hexOf(registers) {
  return registers.map((one) => one.toString(16).padStart(4, "0")).join(" ");
}

/** The rows that a difference of mxtool asks for. */
function differencesOf({ modules }) {
  return modules.flatMap((module) => module.parameters.map((one) => [
    module.name, one.name, `${one.address} (0x${one.address.toString(16)})`,
    `${one.found} ${hexOf(one.found_registers)}`, `→ ${one.planned} ${hexOf(one.planned_registers)}`,
  ]));
}

class OnlineView {
  constructor(page) {
    this.page = page;
  }

  /** The texts of the cells of each row of a table. */
  rows(table) {
    return this.page.evaluate((one) => [...document.querySelectorAll(`${one} tbody tr`)]
      .map((row) => [...row.cells].map((cell) => cell.innerText.replace(/\s+/g, " ").trim())), table);
  }

  differences() {
    return this.rows(".online table.differences");
  }

  /** Live values by the name that `mxtool station watch` gives them. */
  values() {
    return this.page.evaluate(() => Object.fromEntries([...document.querySelectorAll(".online table.live tbody tr")].map((row) => {
      const [module, channel, , value] = [...row.cells].map((cell) => cell.innerText.trim());
      const [, alias] = /^(.*) \(.*\)$/.exec(channel) ?? [];
      return [alias ?? `${module.replace(/^\d+ /, "")}/${channel}`, value.replace(/^.*\n/, "")];
    })));
  }

  badge() {
    return this.page.text("header [class*=target-]");
  }

  /** Why nothing can be written; "" if something can. */
  hindrance() {
    return this.page.text("#apply-reason");
  }

  /** Compares, and waits until what differs is shown. */
  async compare(button, expected) {
    await this.page.click("button", button, ".online");
    await soon("what differs", () => this.differences(), differencesOf(expected));
  }

  /** Types a word into the dialog that asks whether to write, and ends it with Enter. */
  async agreeWith(word) {
    await this.page.click("button", "Apply …", ".online");
    await this.page.fillField("Type \"yes\" to write", word, "Enter", "dialog");
  }
}

module.exports = { OnlineView, differencesOf };
