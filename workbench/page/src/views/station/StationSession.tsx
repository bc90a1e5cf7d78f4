import { useEffect } from "preact/hooks";
import { openedFile } from "../../api/calls";
import { connection, Refusal, Unreachable } from "../../api/client";
import type { Start } from "../../api/types";
import { announce } from "../../state/announcements";
import { diskVersion } from "../../state/status";
import type { Store } from "../../state/store";
import { texts } from "../../texts";
import { base, draft, isChanged } from "./draft";
import { FileChanged } from "./FileChanged";
import { keepDraft, keptDraft } from "./keeping";
import { beginWith, inTurn, planIfUnanswered } from "./planning";
import { checkFile, save, saveFindings, showSaveState, theirs } from "./saving";

async function open(start: Start): Promise<void> {
  const kept = keptDraft(start.file);
  if (start.opened !== "station") {
    beginWith(kept?.text ?? texts.station.emptyDraft);
    return;
  }
  const { text, version } = await openedFile();
  const isOfOlder = kept !== null && kept.base !== null && kept.text !== kept.base.text;
  base.set(isOfOlder ? kept.base : { text, version });
  diskVersion.set(version);
  beginWith(isOfOlder ? kept.text : text);
  checkFile();
}

/** Waits until `store` changes to a value that is wanted. */
function until<T>(store: Store<T>, isWanted: (value: T) => boolean): Promise<void> {
  return new Promise((done) => {
    const end = store.watch(() => {
      if (!isWanted(store.get())) return;
      end();
      done();
    });
  });
}

/** Says why the file cannot be read, and waits until there is another version of it. */
async function untilReadable(refusal: Refusal): Promise<void> {
  const before = diskVersion.get();
  saveFindings.set(refusal.findings);
  announce(texts.station.notOpened(refusal.message), true);
  await until(diskVersion, (version) => version !== before);
  saveFindings.set([]);
}

async function openWhenReached(start: Start): Promise<void> {
  for (;;) {
    try {
      return await open(start);
    } catch (error) {
      if (error instanceof Refusal) await untilReadable(error);
      else if (!(error instanceof Unreachable)) throw error;
      else if (connection.get() !== "connected") await until(connection, (state) => state === "connected");
    }
  }
}

function onKey(event: KeyboardEvent): void {
  if (!(event.ctrlKey || event.metaKey) || event.shiftKey || event.altKey) return;
  if (event.key.toLowerCase() !== "s" || base.get() === null) return;
  event.preventDefault();
  if (document.activeElement instanceof HTMLElement && document.activeElement.matches("input")) {
    // A value that is still typed is set before the draft is saved.
    document.activeElement.dispatchEvent(new Event("change", { bubbles: true }));
  }
  void save();
}

function onLeave(event: BeforeUnloadEvent): void {
  if (isChanged()) event.preventDefault();
}

function watchAll(start: Start): () => void {
  const ends = [
    draft.watch(showSaveState),
    base.watch(showSaveState),
    theirs.watch(showSaveState),
    diskVersion.watch(checkFile),
    connection.watch(() => {
      if (connection.get() === "connected") planIfUnanswered();
    }),
    keepDraft(start.file),
  ];
  addEventListener("keydown", onKey);
  addEventListener("beforeunload", onLeave);
  return () => {
    for (const end of ends) end();
    removeEventListener("keydown", onKey);
    removeEventListener("beforeunload", onLeave);
  };
}

/** Opens the station, keeps its draft and watches its file, whatever view is shown. */
export function StationSession({ start }: { start: Start }) {
  useEffect(() => {
    let end = (): void => undefined;
    let isEnded = false;
    // What is asked for meanwhile, such as by a quick click in another view, is done with the text of the file.
    inTurn(() => openWhenReached(start)).then(() => {
      if (!isEnded) end = watchAll(start);
      showSaveState();
    }).catch(() => undefined);
    return () => {
      isEnded = true;
      end();
    };
  }, [start]);
  return <FileChanged file={start.file ?? ""} />;
}
