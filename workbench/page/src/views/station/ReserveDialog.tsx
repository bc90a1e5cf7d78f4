import { useId, useState } from "preact/hooks";
import { Dialog } from "../../parts/Dialog";
import { texts } from "../../texts";
import { NumberInput, wholeNumber } from "./NumberInput";
import { PlaceChoice } from "./PlaceChoice";
import { RefusedAt } from "./RefusedAt";
import { addReserve } from "./rowMoves";

const words = texts.station.reserve;

/** Asks for the bytes of a reserved place, and adds it to the row. */
export function ReserveDialog({ before, onClose }: { before: number; onClose(): void }) {
  const [input, setInput] = useState("");
  const [output, setOutput] = useState("");
  const [name, setName] = useState("");
  const [place, setPlace] = useState(before);
  const [isRefused, setRefused] = useState(false);
  const id = useId();
  const submit = (event: Event): void => {
    event.preventDefault();
    const inBytes = wholeNumber(input, 0);
    const outBytes = wholeNumber(output, 0);
    const isNumber = inBytes !== undefined && outBytes !== undefined;
    setRefused(!isNumber);
    if (isNumber) void addReserve(inBytes, outBytes, name.trim(), place).then((isMade) => isMade && onClose());
  };
  return (
    <Dialog
      title={words.title}
      onClose={onClose}
      actions={<button type="submit" form={id} class="primary">{words.add}</button>}
    >
      <form id={id} class="fields" onSubmit={submit}>
        <div class="side-by-side">
          <NumberInput label={words.input} value={input} placeholder="0" onInput={setInput} />
          <NumberInput label={words.output} value={output} placeholder="0" onInput={setOutput} />
        </div>
        <div class="side-by-side">
          <div class="labelled">
            <label for={`${id}-name`}>{words.name}</label>
            <input id={`${id}-name`} type="text" autoComplete="off" value={name} onInput={(event) => setName(event.currentTarget.value)} />
          </div>
          <PlaceChoice value={place} onChange={setPlace} />
        </div>
        {isRefused && <p class="field-refused" role="alert">{words.noNumber}</p>}
        <RefusedAt source="reserve" />
      </form>
    </Dialog>
  );
}
