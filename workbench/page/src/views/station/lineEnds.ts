// A text field of the browser knows line feeds alone; files have other line ends too.

/** Returns the text as a text field has it. */
export function shownLines(text: string): string {
  return text.replace(/\r\n?/g, "\n");
}

/** Returns the place in `text` of a place in its shown form. */
function placeIn(text: string, shown: number): number {
  let place = 0;
  for (let left = shown; left > 0; --left) place += text.startsWith("\r\n", place) ? 2 : 1;
  return place;
}

function commonStart(a: string, b: string): number {
  const most = Math.min(a.length, b.length);
  let count = 0;
  while (count < most && a[count] === b[count]) ++count;
  return count;
}

function commonEnd(a: string, b: string, most: number): number {
  let count = 0;
  while (count < most && a[a.length - 1 - count] === b[b.length - 1 - count]) ++count;
  return count;
}

/** Returns `text` with what was typed into its shown form; every other line end is kept. */
export function withTyped(text: string, typed: string): string {
  const shown = shownLines(text);
  const start = commonStart(shown, typed);
  const end = commonEnd(shown, typed, Math.min(shown.length, typed.length) - start);
  const added = typed.slice(start, typed.length - end);
  const lineEnd = text.includes("\r\n") ? "\r\n" : "\n";
  const before = text.slice(0, placeIn(text, start));
  const after = text.slice(placeIn(text, shown.length - end));
  return before + added.replaceAll("\n", lineEnd) + after;
}
