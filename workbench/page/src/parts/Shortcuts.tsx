import { useEffect } from "preact/hooks";
import { isHelpOpen, openHelp } from "../state/help";
import { useStore } from "../state/store";
import { texts } from "../texts";
import { Dialog } from "./Dialog";

/** Returns whether keys typed in this element are text. */
function isTyping(target: EventTarget | null): boolean {
  if (target instanceof HTMLInputElement) return !["checkbox", "radio", "button"].includes(target.type);
  return target instanceof HTMLTextAreaElement || target instanceof HTMLSelectElement;
}

function focusSearch(): boolean {
  const field = document.querySelector<HTMLElement>("main [type=search]");
  field?.focus();
  return field !== null;
}

function onKey(event: KeyboardEvent): void {
  const isCommand = event.ctrlKey || event.metaKey;
  if (isCommand && !event.shiftKey && event.key.toLowerCase() === "k") {
    if (focusSearch()) event.preventDefault();
  } else if (event.key === "?" && !isCommand && !isTyping(event.target)) {
    event.preventDefault();
    openHelp();
  }
}

/** The keys of the page: those for every view act here, the dialog lists all. */
export function Shortcuts() {
  const isOpen = useStore(isHelpOpen);
  useEffect(() => {
    addEventListener("keydown", onKey);
    return () => removeEventListener("keydown", onKey);
  }, []);
  if (!isOpen) return null;
  return (
    <Dialog title={texts.help.title} onClose={() => isHelpOpen.set(false)}>
      <table class="shortcuts">
        <thead><tr><th scope="col">{texts.help.keys}</th><th scope="col">{texts.help.what}</th></tr></thead>
        <tbody>
          {texts.help.all.map(([keys, what]) => (
            <tr key={keys}><th scope="row"><kbd>{keys}</kbd></th><td>{what}</td></tr>
          ))}
        </tbody>
      </table>
    </Dialog>
  );
}
