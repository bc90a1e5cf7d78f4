/** Returns whether the texts have each of the words, whatever their case. */
export function hasWords(words: string, ...within: readonly string[]): boolean {
  const text = within.join(" ").toLowerCase();
  return words.toLowerCase().split(/\s+/).every((word) => text.includes(word));
}
