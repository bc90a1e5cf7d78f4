// The token of this run: it comes in the fragment of the first address and is kept for this tab.

const key = "mxtool-workbench-token";

function fragment(): string {
  return location.hash.slice(1);
}

function isRoute(text: string): boolean {
  return text === "" || text.startsWith("/");
}

/** Takes a token from the address, if there is one, and removes it from there. */
export function takeToken(): boolean {
  const text = fragment();
  if (isRoute(text)) return false;
  sessionStorage.setItem(key, text);
  history.replaceState(null, "", location.pathname);
  return true;
}

/** Returns the token of this tab, or null. */
export function token(): string | null {
  return sessionStorage.getItem(key);
}
