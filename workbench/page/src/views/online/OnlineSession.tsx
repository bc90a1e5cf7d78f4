import { useEffect } from "preact/hooks";
import { followTarget } from "./session";

/** Follows the target whatever view is shown, so that its state in the header is never an old one. */
export function OnlineSession() {
  useEffect(followTarget, []);
  return null;
}
