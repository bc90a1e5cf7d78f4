import { useId, useState } from "preact/hooks";
import { Dialog } from "../../parts/Dialog";
import { texts } from "../../texts";
import { NumberInput, wholeNumber } from "./NumberInput";
import { RefusedAt } from "./RefusedAt";
import type { Place } from "./rowPlaces";
import { placeName } from "./naming";
import { pinEntry } from "./rowMoves";

const words = texts.station.pin;

function stated(pin: number | null, planned: number | undefined): string {
  const address = pin ?? planned;
  return address === undefined ? "" : String(address);
}

/** Asks for the addresses of an entry: those that it has now, if none is pinned. */
export function PinDialog({ place, onClose }: { place: Place; onClose(): void }) {
  const { entry } = place;
  const [input, setInput] = useState(stated(entry.at.in, place.in?.offset));
  const [output, setOutput] = useState(stated(entry.at.out, place.out?.offset));
  const [isRefused, setRefused] = useState(false);
  const id = useId();
  const submit = (event: Event): void => {
    event.preventDefault();
    const inAt = wholeNumber(input, null);
    const outAt = wholeNumber(output, null);
    const isNumber = inAt !== undefined && outAt !== undefined;
    setRefused(!isNumber);
    if (isNumber) void pinEntry(entry.index, inAt, outAt).then((isMade) => isMade && onClose());
  };
  const unpin = (): void => {
    void pinEntry(entry.index, null, null).then((isMade) => isMade && onClose());
  };
  const isPinned = entry.at.in !== null || entry.at.out !== null;
  return (
    <Dialog
      title={words.title(placeName(place))}
      onClose={onClose}
      actions={
        <>
          <button type="submit" form={id} class="primary">{words.pin}</button>
          {isPinned && <button type="button" onClick={unpin}>{words.unpin}</button>}
        </>
      }
    >
      <form id={id} class="fields" onSubmit={submit}>
        <p class="faint">{words.explained}</p>
        <div class="side-by-side">
          <NumberInput label={words.input} value={input} placeholder={words.notPinned} onInput={setInput} />
          <NumberInput label={words.output} value={output} placeholder={words.notPinned} onInput={setOutput} />
        </div>
        {isRefused && <p class="field-refused" role="alert">{texts.station.reserve.noNumber}</p>}
        <RefusedAt source="pin" />
      </form>
    </Dialog>
  );
}
