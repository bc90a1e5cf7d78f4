import { useEffect } from "preact/hooks";
import { exportModule } from "../../api/calls";
import type { CsvChoice, Export } from "../../api/types";
import { Menu } from "../../parts/Menu";
import type { MenuItem } from "../../parts/Menu";
import { Picture } from "../../parts/Picture";
import { download } from "../../parts/download";
import { say } from "../../state/announcements";
import { texts } from "../../texts";
import type { AddModule } from "../catalogue/Results";
import type { Editing, ModuleSession } from "./session";

async function tell(work: Promise<boolean>, done: string, nothing: string): Promise<void> {
  say((await work) ? done : nothing);
}

function undo(session: ModuleSession): void {
  void tell(session.undo(), texts.module.undone, texts.module.nothingToUndo);
}

function redo(session: ModuleSession): void {
  void tell(session.redo(), texts.module.redone, texts.module.nothingToRedo);
}

/** Returns whether the keys take back what is typed in a field, not a change of a value. */
function isOfTyping(target: EventTarget | null): boolean {
  if (target instanceof HTMLTextAreaElement) return true;
  return target instanceof HTMLInputElement && (target.type === "search" || "typed" in target.dataset);
}

function useKeys(session: ModuleSession): void {
  useEffect(() => {
    const onKey = (event: KeyboardEvent): void => {
      if (!(event.ctrlKey || event.metaKey) || event.altKey || isOfTyping(event.target)) return;
      const key = event.key.toLowerCase();
      if (key === "z" && !event.shiftKey) undo(session);
      else if (key === "y" || (key === "z" && event.shiftKey)) redo(session);
      else return;
      event.preventDefault();
    };
    addEventListener("keydown", onKey);
    return () => removeEventListener("keydown", onKey);
  }, [session]);
}

function Tools({ session, editing }: { session: ModuleSession; editing: Editing }) {
  const { values, refused, past, future } = editing;
  const isChanged = values.size > 0 || refused.size > 0;
  return (
    <>
      <span class={values.size > 0 ? "badge-changed" : "faint"}>{texts.module.changed(values.size)}</span>
      <button type="button" aria-disabled={past.length === 0 && refused.size === 0} onClick={() => undo(session)}>{texts.module.undo}</button>
      <button type="button" aria-disabled={future.length === 0} onClick={() => redo(session)}>{texts.module.redo}</button>
      <button
        type="button"
        aria-disabled={!isChanged}
        onClick={() => void tell(session.resetAll(), texts.module.reset, texts.connection.lost)}
      >{texts.module.resetAll}</button>
    </>
  );
}

/** At the end of the key of an item: CSV as spreadsheets of many countries read it. */
const forSpreadsheets = " for spreadsheets";

function exportItems(exports: readonly Export[]): MenuItem[] {
  return exports.flatMap(({ format, label }) => [
    { key: format, label },
    ...(format.endsWith("-csv") ? [{ key: format + forSpreadsheets, label: texts.module.semicolons(label) }] : []),
  ]);
}

function exportAs(session: ModuleSession, key: string): void {
  const isForSpreadsheets = key.endsWith(forSpreadsheets);
  const format = isForSpreadsheets ? key.slice(0, -forSpreadsheets.length) : key;
  const csv: CsvChoice = isForSpreadsheets ? { separator: "semicolon", byteOrderMark: true } : {};
  void download(exportModule(session.reference, session.values(), format, csv));
}

interface ModuleHeadProps {
  session: ModuleSession;
  editing: Editing;
  exports: readonly Export[];
  onAdd: AddModule | undefined;
}

/** What the module is, and what can be done with all of its values. */
export function ModuleHead({ session, editing, exports, onAdd }: ModuleHeadProps) {
  useKeys(session);
  const { device, picture, sizes } = editing.module;
  return (
    <div class="module-head">
      <Picture source={picture} label={texts.module.pictureOf(device.label)} />
      <div class="module-name">
        <h1 tabIndex={-1}>{device.label}</h1>
        <p class="faint"><span class="mono">{device.device_type_id}</span> · {texts.module.facts(sizes.input, sizes.output, sizes.parameters)}</p>
      </div>
      <div class="tools">
        <Tools session={session} editing={editing} />
        {exports.length > 0 && (
          <Menu
            label={texts.module.exports}
            items={exportItems(exports)}
            onChoose={(key) => exportAs(session, key)}
          />
        )}
        {onAdd !== undefined && session.reference !== "" && (
          <button type="button" class="primary" onClick={() => onAdd(session.reference, device.label)}>{texts.catalogue.add}</button>
        )}
      </div>
    </div>
  );
}
