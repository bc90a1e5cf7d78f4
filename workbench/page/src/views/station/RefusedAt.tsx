import { Findings } from "../../parts/Findings";
import { useStore } from "../../state/store";
import { draft } from "./draft";

/** Why the last edit of this part of the page was refused; nothing if it was made. */
export function RefusedAt({ source, id }: { source: string; id?: string }) {
  const refused = useStore(draft, (value) => (value.refused?.source === source ? value.refused : null));
  return refused === null ? null : <div id={id} class="refused-at"><Findings findings={refused.findings} /></div>;
}
