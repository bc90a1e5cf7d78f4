import { announcements, dismiss } from "../state/announcements";
import type { Announcement } from "../state/announcements";
import { useStore } from "../state/store";
import { texts } from "../texts";

function Toast({ one }: { one: Announcement }) {
  return (
    <li class={one.isUrgent ? "toast urgent" : "toast"}>
      <span>{one.text}</span>
      {one.action !== undefined && <button type="button" class="small" onClick={one.action.run}>{one.action.label}</button>}
      <button type="button" class="quiet" aria-label={texts.dismiss} onClick={() => dismiss(one.id)}>✕</button>
    </li>
  );
}

function last(all: readonly Announcement[], isUrgent: boolean): string {
  return all.filter((one) => one.isUrgent === isUrgent).at(-1)?.text ?? "";
}

/** The messages of `announce`, seen and heard. */
export function Live() {
  const all = useStore(announcements);
  const shown = all.filter((one) => one.isShown);
  return (
    <>
      <div class="heard" role="status">{last(all, false)}</div>
      <div class="heard" role="alert">{last(all, true)}</div>
      {shown.length > 0 && (
        <section aria-label={texts.messages}>
          <ul class="toasts">
            {shown.map((one) => <Toast key={one.id} one={one} />)}
          </ul>
        </section>
      )}
    </>
  );
}
