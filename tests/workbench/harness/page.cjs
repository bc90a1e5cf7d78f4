// The page as a person uses it: by names of fields and buttons, with mouse and keys.
"use strict";

const { soon, untilMet } = require("./expected.cjs");

// Runs in the page: the name of an element as a screen reader has it, as far as this page needs it.
function installNames() {
  const clean = (text) => (text ?? "").replace(/\s+/g, " ").trim();
  window.nameOf = (element) => {
    const label = element.getAttribute("aria-label");
    if (label !== null) return clean(label);
    const by = element.getAttribute("aria-labelledby");
    if (by !== null) return clean(document.getElementById(by)?.textContent);
    if (element.labels?.length > 0) return clean(element.labels[0].textContent);
    const copy = element.cloneNode(true);
    copy.querySelectorAll?.("[aria-hidden=true]").forEach((one) => one.remove());
    return clean(copy.textContent);
  };
  window.named = (selector, name, within = document) => {
    const all = [...within.querySelectorAll(selector)].filter((one) => one.checkVisibility());
    return all.find((one) => nameOf(one) === name) ?? all.find((one) => nameOf(one).startsWith(name)) ?? null;
  };
}

const kinds = {
  button: "button, [role=button], [role=menuitem]",
  link: "a",
  tab: "[role=tab]",
  field: "input, select, textarea",
  grid: "[role=grid]",
};

// Runs in the page: the element as soon as it has stayed at its place for two frames, with a look at where it is pressed.
async function atRest(element) {
  // A page behind another one draws no frames.
  const frame = () => new Promise((done) => { requestAnimationFrame(done); setTimeout(done, 50); });
  const place = () => { const { x, y, width, height } = element.getBoundingClientRect(); return [x, y, width, height].join(); };
  for (let before = "", now = place(), left = 60; before !== now && left > 0; --left) {
    before = now;
    await frame();
    await frame();
    now = place();
  }
  const pressed = { isInside: null };
  document.addEventListener("pointerdown", (event) => { pressed.isInside = event.composedPath().includes(element); },
    { capture: true, once: true });
  return pressed;
}

/** Clicks an element at rest, and again where the page moved it from under the mouse: nothing can stop that in between. */
async function clickAtRest(element, options) {
  for (let left = 5; left > 0; --left) {
    const pressed = await element.evaluateHandle(atRest);
    await element.click(options);
    // A click that leaves the page takes the answer with it.
    if (await pressed.evaluate((one) => one.isInside).catch(() => true) !== false) {
      return;
    }
  }
  throw new Error("the page moves the element whenever it is clicked");
}

class Page {
  constructor(page) {
    this.page = page;
  }

  static async open(page, address) {
    await page.evaluateOnNewDocument(installNames);
    await page.goto(address, { waitUntil: "domcontentloaded" });
    return new Page(page);
  }

  get keyboard() {
    return this.page.keyboard;
  }

  evaluate(what, ...values) {
    return this.page.evaluate(what, ...values);
  }

  /** The element of a kind with a name, as soon as the page has it. */
  async find(kind, name, within = "body") {
    const selector = kinds[kind] ?? kind;
    const look = () => this.page.evaluateHandle(
      (all, wanted, root) => {
        const place = document.querySelector(root);
        return place === null ? null : window.named(all, wanted, place);
      }, selector, name, within);
    const handle = await untilMet(`the page has the ${kind} "${name}" in ${within}`, look,
      (found) => typeof found === "object" && found.asElement() !== null, `${kind} "${name}"`);
    return handle.asElement();
  }

  /** Clicks it; again where the page drew it anew between the look and the click. */
  async click(kind, name, within) {
    for (let left = 5; ; --left) {
      try {
        await clickAtRest(await this.find(kind, name, within));
        return;
      } catch (error) {
        if (left === 0 || !/not clickable|detached/.test(error.message)) {
          throw error;
        }
      }
    }
  }

  /** Replaces the text of a field and ends it with `key`. */
  async fill(element, text, key = "Enter") {
    await clickAtRest(element, { count: 3 });
    await this.keyboard.down("Control");
    await this.keyboard.press("a");
    await this.keyboard.up("Control");
    if (text === "") {
      await this.keyboard.press("Delete");
    } else {
      await this.keyboard.sendCharacter(text);
    }
    if (key !== "") {
      await this.keyboard.press(key);
    }
  }

  async fillField(name, text, key = "", within = "body") {
    await this.fill(await this.find("field", name, within), text, key);
  }

  async choose(name, option, within = "body") {
    const field = await this.find("field", name, within);
    await field.select(option);
  }

  /** Presses keys such as "Control+Shift+KeyZ". */
  async press(keys) {
    const parts = keys.split("+");
    const last = parts.pop();
    for (const one of parts) {
      await this.keyboard.down(one);
    }
    await this.keyboard.press(last);
    for (const one of parts.reverse()) {
      await this.keyboard.up(one);
    }
  }

  /** Presses a key until an element of this name has the focus. */
  async reach(name, key = "Tab", most = 120) {
    for (let count = 0; count < most; ++count) {
      if ((await this.focused()) === name) {
        return;
      }
      await this.press(key);
    }
    throw new Error(`"${name}" is not reached by ${key}; the focus is on "${await this.focused()}"`);
  }

  /** The name of what has the focus; "" if nothing has. */
  focused() {
    return this.evaluate(() => (document.activeElement === document.body ? "" : window.nameOf(document.activeElement)));
  }

  /** The text that a person sees, of the page or of elements. */
  text(selector = "body") {
    return this.evaluate((one) => [...document.querySelectorAll(one)].map((each) => each.innerText).join("\n"), selector);
  }

  texts(selector) {
    return this.evaluate((one) => [...document.querySelectorAll(one)]
      .map((each) => each.innerText.replace(/\s+/g, " ").trim()), selector);
  }

  has(selector) {
    return this.evaluate((one) => document.querySelector(one) !== null, selector);
  }

  /** Waits for the heading of a view. */
  heading(text) {
    return soon(`the heading of the view`, () => this.text("main h1"), text);
  }

  /** The open dialog's title; "" without one. */
  dialog() {
    return this.text("dialog[open] h2");
  }

  async go(hash) {
    await this.evaluate((to) => { location.hash = to; }, hash);
  }
}

module.exports = { Page, clickAtRest };
