// Where the focus is, and where Tab leads.
"use strict";

// Runs in the page. A stop is an element with the focus, with what a person needs to see and hear there.
function stopNow() {
  const one = document.activeElement;
  if (one === null || one === document.body) return null;
  const numbered = (window.stops ??= new Map());
  if (!numbered.has(one)) numbered.set(one, numbered.size);
  // A switch or an option is drawn by its label, a text with the numbers of its lines in a frame.
  const drawn = ["checkbox", "radio"].includes(one.type) ? one.closest("label") ?? one : one;
  const frame = one.tagName === "TEXTAREA" ? one.parentElement.parentElement : one;
  const all = [one, ...drawn.querySelectorAll("*"), drawn, frame];
  const isMarked = all.some((each) => {
    const { outlineStyle, outlineWidth, boxShadow } = getComputedStyle(each);
    return (outlineStyle !== "none" && parseFloat(outlineWidth) >= 1) || (each === one && boxShadow !== "none");
  });
  const box = drawn.getBoundingClientRect();
  const [x, y] = [Math.max(box.left, 0) + 3, Math.max(box.top, 0) + 3];
  const isInSight = box.bottom > 0 && box.top < innerHeight && box.right > 0 && box.left < innerWidth;
  const above = document.elementFromPoint(Math.min(x, innerWidth - 1), Math.min(Math.max(y, (box.top + box.bottom) / 2), innerHeight - 1));
  const isCovered = above !== null && !drawn.contains(above) && !above.contains(drawn);
  // The content of a field is no name of it.
  const isNamed = !["INPUT", "SELECT", "TEXTAREA"].includes(one.tagName) || one.labels.length > 0 || one.hasAttribute("aria-label");
  return {
    number: numbered.get(one), name: isNamed ? window.nameOf(one) : "", tag: `${one.tagName.toLowerCase()}.${one.className}`,
    isMarked, isInSight, coveredBy: isCovered ? `${above.tagName.toLowerCase()}.${above.className}` : "",
  };
}

// Runs in the page: what Tab should lead to, but did not.
function notReached() {
  const all = document.querySelectorAll("a[href], button, input, select, textarea, [tabindex='0']");
  const isStop = (one) => one.tabIndex >= 0 && one.checkVisibility() && one.type !== "radio";
  return [...all].filter((one) => isStop(one) && !window.stops.has(one)).map((one) => one.outerHTML.slice(0, 160));
}

/** Puts the focus on the first stop of the page. */
function toTop(page) {
  return page.evaluate(() => document.querySelector(".skip").focus());
}

/** Presses Tab until the page has been left or the focus is where it began; returns the stops. */
async function tabThrough(page, most = 400) {
  const stops = [];
  await page.evaluate(() => { window.stops = new Map(); });
  await toTop(page);
  await page.press("Tab");
  await page.press("Shift+Tab");
  for (let count = 0; count < most; ++count) {
    const stop = await page.evaluate(stopNow);
    if (stop === null || stop.number < stops.length) {
      return stops;
    }
    stops.push(stop);
    await page.press("Tab");
  }
  throw new Error(`Tab does not come to an end: ${JSON.stringify(stops.slice(-3))}`);
}

module.exports = { tabThrough, notReached };
