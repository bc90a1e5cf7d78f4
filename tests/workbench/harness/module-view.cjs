// The fields of a module and its bytes, in the view of a module or of a station.
"use strict";

const { soon } = require("./expected.cjs");
const { clickAtRest } = require("./page.cjs");

const grids = { raw: "Parameter image", modbus: "Modbus registers" };

class ModuleView {
  constructor(page) {
    this.page = page;
  }

  field(id) {
    return `[data-parameter="${id}"]`;
  }

  /** The bytes that a table shows, as mxtool writes them. */
  bytes(fieldbus) {
    return this.page.evaluate((label) => [...document.querySelectorAll(`[role=grid][aria-label="${label}"] [data-byte] > span:first-child`)]
      .map((one) => one.textContent).join(" "), grids[fieldbus]);
  }

  /** The numbers of the bytes that have a class: "lit" or "changed". */
  marked(fieldbus, className) {
    return this.page.evaluate((label, name) =>
      [...document.querySelectorAll(`[role=grid][aria-label="${label}"] [data-byte].${name}`)].map((one) => Number(one.dataset.byte)),
    grids[fieldbus], className);
  }

  /** The identifiers of the fields that have a class. */
  fields(className) {
    return this.page.evaluate((name) => [...document.querySelectorAll(`[data-parameter].${name}`)].map((one) => one.dataset.parameter), className);
  }

  /** Sets a parameter as a person does: a number is typed, an option chosen, a switch pressed. */
  async set(id, word) {
    const { page } = this.page;
    const control = await page.waitForSelector(`${this.field(id)} :is(input, select)`);
    // The header stays in sight and may cover what the browser takes for visible.
    await control.evaluate((one) => one.scrollIntoView({ block: "center" }));
    const kind = await control.evaluate((one) => (one.tagName === "SELECT" ? "select" : one.type));
    if (kind === "select") {
      await control.select(word);
    } else if (kind === "radio") {
      const radio = await page.waitForSelector(`${this.field(id)} input[value="${CSS.escape(word)}"]`);
      await clickAtRest(await radio.evaluateHandle((one) => one.closest("label")));
    } else if (kind === "checkbox") {
      await clickAtRest(control);
    } else {
      await this.page.fill(control, word);
    }
  }

  /** What a field shows: the typed number, the text of the option, or whether the switch is on. */
  shown(id) {
    return this.page.evaluate((field) => {
      const control = document.querySelector(`${field} :is(input:checked, input:not([type=radio]), select)`);
      if (control === null) return null;
      if (control.type === "checkbox") return control.checked;
      if (control.type === "radio") return control.closest("label").textContent;
      return control.tagName === "SELECT" ? control.selectedOptions[0].text : control.value;
    }, this.field(id));
  }

  /** Waits until both tables have the bytes of a configuration of mxtool. */
  async showsBytesOf({ raw, modbus }) {
    await soon("bytes of the parameter image", () => this.bytes("raw"), raw.bytes);
    await soon("bytes of the registers", () => this.bytes("modbus"), modbus.bytes);
  }

  /** Waits until the fields that are marked as changed are those of a configuration. */
  async marksChangesOf({ raw }) {
    const changed = raw.parameters.filter((one) => one.changed).map((one) => one.id).sort();
    await soon("fields marked as changed", async () => (await this.fields("changed")).sort(), changed);
  }
}

// The same rule as CSS.escape for the words of options.
const CSS = { escape: (text) => text.replace(/["\\]/g, "\\$&") };

/** What mxtool config makes of values: of both fieldbuses. */
async function configured(workplace, file, values) {
  const sets = Object.entries(values).flatMap(([name, value]) => ["--set", `${name}=${value}`]);
  const [raw, modbus] = await Promise.all([
    workplace.json("config", file, ...sets),
    workplace.json("config", file, ...sets, "--fieldbus", "modbus"),
  ]);
  return { raw, modbus };
}

/** The parameter of a name; `channel` null for one of the module. */
function parameterOf(raw, channel, name) {
  return raw.parameters.find((one) => one.channel === channel && one.name === name);
}

module.exports = { ModuleView, configured, parameterOf };
