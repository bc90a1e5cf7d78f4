/** A line of a comparison: in both texts, only in the first or only in the second. */
export interface ComparedLine {
  kind: "same" | "removed" | "added";
  text: string;
}

// Above it, the changed middle is shown as removed and added as a whole.
const mostCells = 4_000_000;

function commonCount(a: readonly string[], b: readonly string[]): number {
  let count = 0;
  while (count < a.length && count < b.length && a[count] === b[count]) ++count;
  return count;
}

/** Returns for each pair of places the length of the longest common row of lines after them. */
function lengths(a: readonly string[], b: readonly string[]): Uint32Array {
  const width = b.length + 1;
  const table = new Uint32Array((a.length + 1) * width);
  for (let i = a.length - 1; i >= 0; --i) {
    for (let j = b.length - 1; j >= 0; --j) {
      const isSame = a[i] === b[j];
      const without = Math.max(table[(i + 1) * width + j] ?? 0, table[i * width + j + 1] ?? 0);
      table[i * width + j] = isSame ? (table[(i + 1) * width + j + 1] ?? 0) + 1 : without;
    }
  }
  return table;
}

const removed = (text: string): ComparedLine => ({ kind: "removed", text });
const added = (text: string): ComparedLine => ({ kind: "added", text });
const same = (text: string): ComparedLine => ({ kind: "same", text });

function middle(a: readonly string[], b: readonly string[]): ComparedLine[] {
  if ((a.length + 1) * (b.length + 1) > mostCells) return [...a.map(removed), ...b.map(added)];
  const table = lengths(a, b);
  const width = b.length + 1;
  const lines: ComparedLine[] = [];
  let i = 0;
  let j = 0;
  while (i < a.length && j < b.length) {
    if (a[i] === b[j]) {
      lines.push(same(a[i++] ?? ""));
      ++j;
    } else if ((table[(i + 1) * width + j] ?? 0) >= (table[i * width + j + 1] ?? 0)) lines.push(removed(a[i++] ?? ""));
    else lines.push(added(b[j++] ?? ""));
  }
  return [...lines, ...a.slice(i).map(removed), ...b.slice(j).map(added)];
}

/** Compares two texts line by line. */
export function differingLines(before: string, after: string): ComparedLine[] {
  const a = before.split(/\r\n?|\n/);
  const b = after.split(/\r\n?|\n/);
  const start = commonCount(a, b);
  const end = commonCount(a.slice(start).reverse(), b.slice(start).reverse());
  return [
    ...a.slice(0, start).map(same),
    ...middle(a.slice(start, a.length - end), b.slice(start, b.length - end)),
    ...a.slice(a.length - end).map(same),
  ];
}

/** Returns the lines that differ, each with some lines around it; null: lines are left out. */
export function nearDifferences(lines: readonly ComparedLine[], around: number): (ComparedLine | null)[] {
  const isNear = lines.map((_, index) =>
    lines.slice(Math.max(0, index - around), index + around + 1).some((one) => one.kind !== "same"));
  const shown: (ComparedLine | null)[] = [];
  lines.forEach((line, index) => {
    if (isNear[index]) shown.push(line);
    else if (shown.at(-1) !== null) shown.push(null);
  });
  return shown;
}
