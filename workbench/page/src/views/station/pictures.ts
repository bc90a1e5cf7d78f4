import { useEffect } from "preact/hooks";
import { stationPictures } from "../../api/stationCalls";
import { Store } from "../../state/store";
import { useStore } from "../../state/store";
import { draft } from "./draft";
import type { Draft } from "./draft";

type Pictures = Readonly<Record<string, string | null>>;

const pictures = new Store<Pictures>({});

function references(value: Draft): string {
  const all = new Set(value.planned?.plan?.modules.map((module) => module.reference) ?? []);
  return JSON.stringify([...all].sort());
}

/** Returns the product images by reference, and asks for those that are not known yet. */
export function usePictures(): Pictures {
  const wanted = useStore(draft, references);
  useEffect(() => {
    const known = pictures.get();
    const text = draft.get().planned?.text;
    if (text === undefined || (JSON.parse(wanted) as string[]).every((one) => one in known)) return;
    stationPictures(text).then((found) => pictures.set({ ...pictures.get(), ...found.pictures })).catch(() => undefined);
  }, [wanted]);
  return useStore(pictures);
}
