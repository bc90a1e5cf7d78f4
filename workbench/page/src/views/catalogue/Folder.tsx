import type { FolderModule } from "../../api/types";
import { useRoving } from "../../parts/roving";
import { address } from "../../state/route";
import { useStore } from "../../state/store";
import { hasWords } from "../../state/words";
import { texts } from "../../texts";
import type { AddModule } from "./Results";
import { query } from "./search";

/** The mx files of the folder that have the words of the search. */
export function Folder({ all, onAdd }: { all: readonly FolderModule[]; onAdd: AddModule | undefined }) {
  const { words } = useStore(query);
  const found = all.filter((one) => hasWords(words, one.reference, one.label));
  const roving = useRoving(found.length);
  return (
    <section aria-labelledby="folder-title">
      <h2 id="folder-title">{texts.catalogue.folder} <span class="faint">{texts.catalogue.count(found.length)}</span></h2>
      <ul class="files" onKeyDown={roving.onKeyDown} onFocusIn={roving.onFocusIn}>
        {found.map((one, index) => (
          <li key={one.reference} data-item={index}>
            <span>
              <a class="mono" href={address({ view: "module", reference: one.reference })} tabIndex={index === roving.current ? 0 : -1}>
                {one.reference}
              </a>
              <span class="faint">{one.label}</span>
            </span>
            {onAdd !== undefined && (
              <button
                type="button"
                class="small"
                tabIndex={index === roving.current ? 0 : -1}
                aria-label={texts.catalogue.addOf(one.reference)}
                onClick={() => onAdd(one.reference, one.reference)}
              >{texts.catalogue.add}</button>
            )}
          </li>
        ))}
      </ul>
    </section>
  );
}
