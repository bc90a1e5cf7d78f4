import { useEffect, useState } from "preact/hooks";
import { takeToken } from "../api/session";

export type Route =
  | { view: "catalogue" | "station" | "online" }
  | { view: "module"; reference: string };

/** Returns the address of a view, for a link. */
export function address(route: Route): string {
  return route.view === "module" ? `#/module/${encodeURIComponent(route.reference)}` : `#/${route.view}`;
}

function decoded(text: string): string {
  try {
    return decodeURIComponent(text);
  } catch {
    return text;
  }
}

function parse(hash: string): Route | null {
  const [, view, ...rest] = hash.split("/");
  if (view === "module") return { view, reference: decoded(rest.join("/")) };
  return view === "catalogue" || view === "station" || view === "online" ? { view } : null;
}

/** Returns the view that the address names; null: none. */
export function useRoute(): Route | null {
  const [route, setRoute] = useState(() => parse(location.hash));
  useEffect(() => {
    const follow = (): void => {
      if (takeToken()) location.reload();
      else setRoute(parse(location.hash));
    };
    addEventListener("hashchange", follow);
    // The address may have changed before this listened.
    follow();
    return () => removeEventListener("hashchange", follow);
  }, []);
  return route;
}
