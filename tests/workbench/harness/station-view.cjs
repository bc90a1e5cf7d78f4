// The view of a station: its row, its text, its totals.
"use strict";

const { soon, untilMet } = require("./expected.cjs");
const { clickAtRest } = require("./page.cjs");
const { ModuleView } = require("./module-view.cjs");

const reasons = { padding: "Padding", status: "Status" };

function range({ offset, size }) {
  return `${size === 1 ? offset : `${offset}–${offset + size - 1}`} (${size} B)`;
}

/** The row that a plan of mxtool asks for: modules with their bytes in both images. */
function rowOf(plan) {
  return plan.modules.map((one) => ({
    position: String(one.position),
    name: one.name,
    label: one.label,
    in: one.in.size === 0 ? "" : range(one.in),
    out: one.out.size === 0 ? "" : range(one.out),
  }));
}

/** The gaps between entries that a plan of mxtool has, without those that are entries or within modules. */
function gapsOf(plan) {
  return plan.gaps.filter((one) => one.reason in reasons && one.module === null)
    .map((one) => `${reasons[one.reason]} ${one.image} ${range(one)}`).sort();
}

function imageOf({ offset, size }, ofModules) {
  return size === 0 ? "0 B" : `${size} B at ${offset}${size === 1 ? "" : `–${offset + size - 1}`}, ${ofModules} B of modules`;
}

function totalsOf({ totals, input, output, layout }) {
  return [
    `${totals.modules} of at most ${layout.most_modules}`,
    imageOf(input, totals.in),
    imageOf(output, totals.out),
    `${totals.parameters} B, ${totals.registers} ${totals.registers === 1 ? "register" : "registers"}`,
    layout.name,
  ];
}

class StationView {
  constructor(page) {
    this.page = page;
    this.module = new ModuleView(page);
  }

  /** Waits until the row is there. */
  static async on(page, count) {
    const view = new StationView(page);
    await untilMet("the row is drawn", () => page.texts(".entry-card .entry-bytes"), (found) => found.length > 0, "addresses");
    if (count !== undefined) {
      await soon("entries", async () => (await view.names()).length, count);
    }
    return view;
  }

  text() {
    return this.page.evaluate(() => document.querySelector(".yaml textarea").value);
  }

  /** Replaces the whole text as if typed. */
  async type(text) {
    await this.page.fill(await this.page.find("field", "Text of the station, YAML"), text, "");
  }

  names() {
    return this.page.texts(".entry-card .entry-name");
  }

  /** The modules of the row, as `rowOf` has them. */
  row() {
    return this.page.evaluate(() => {
      const text = (card, one) => (card.querySelector(one)?.innerText ?? "").replace(/\s+/g, " ").trim();
      const bytes = (card, side) => text(card, `.entry-bytes.${side}`).replace(`${side} `, "").replace(/ ⚲.*/, "");
      return [...document.querySelectorAll(".entry-card")].map((card) => ({
        position: text(card, ".entry-position"), name: text(card, ".entry-name"), label: text(card, ".entry-label"),
        in: bytes(card, "in"), out: bytes(card, "out"),
      })).filter((one) => one.position !== "–");
    });
  }

  async gaps() {
    return (await this.page.texts(".entry-gap")).sort();
  }

  totals() {
    return this.page.texts("[aria-label=Totals] dd");
  }

  /** Waits until row, gaps and totals are those that mxtool plans for the text that is shown. */
  async isAsPlanned(workplace) {
    const plan = await workplace.ofText(await this.text(), "station", "show");
    await soon("row", () => this.row(), rowOf(plan));
    await soon("gaps", () => this.gaps(), gapsOf(plan));
    await soon("totals", () => this.totals(), totalsOf(plan));
    return plan;
  }

  /** Waits until the text has something, or no longer has it. */
  async textHas(words, isThere = true) {
    return untilMet(`the text of the station ${isThere ? "has" : "no longer has"} ${words}`, () => this.text(),
      (found) => found.includes(words) === isThere, words);
  }

  /** The button of the entry with this name. */
  async card(name) {
    const look = () => this.page.page.evaluateHandle((wanted) => [...document.querySelectorAll(".entry-card")]
      .find((one) => one.querySelector(".entry-name").innerText === wanted) ?? null, name);
    const handle = await untilMet(`the row has ${name}`, look, (found) => found.asElement?.() != null, name);
    return handle.asElement();
  }

  async choose(name) {
    const card = await this.card(name);
    await card.evaluate((one) => one.scrollIntoView({ block: "center", inline: "center" }));
    await clickAtRest(card);
    await soon("selected entry", () => this.selected(), name);
  }

  selected() {
    return this.page.text(".entry-card[aria-pressed=true] .entry-name");
  }

  /** Chooses an action of the selected entry. */
  async act(action) {
    const name = await this.selected();
    await this.page.click("button", `Selected: ${name}`, "[role=group][aria-label=Actions]");
    await this.page.click("[role=menuitem]", action);
  }

  saveState() {
    return this.page.text(".file-state .badge");
  }

  findings() {
    return this.page.text(".problems");
  }
}

module.exports = { StationView, rowOf };
