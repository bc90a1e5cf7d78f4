import { useEffect, useId, useState } from "preact/hooks";
import type { OnlinePlan } from "../../api/onlineTypes";
import { Dialog } from "../../parts/Dialog";
import { texts } from "../../texts";
import { apply } from "./session";

const words = texts.online.apply;

export interface ApplyDialogProps {
  plan: OnlinePlan;
  onClose(): void;
}

/** Asks whether the plan may be written: the word is typed, as on the command line. */
export function ApplyDialog({ plan, onClose }: ApplyDialogProps) {
  const [typed, setTyped] = useState("");
  const [agreed] = useState(plan.id);
  const id = useId();
  useEffect(() => {
    if (plan.id !== agreed) onClose();
  }, [plan.id]);
  const isAgreed = typed === words.word;
  const submit = (event: Event): void => {
    event.preventDefault();
    if (!isAgreed) return;
    onClose();
    void apply(agreed);
  };
  return (
    <Dialog
      title={words.title(plan.difference.target)}
      onClose={onClose}
      actions={<button type="submit" form={id} class="primary" aria-disabled={!isAgreed}>{words.write}</button>}
    >
      <form id={id} class="fields" onSubmit={submit}>
        <p class="question">{plan.question}</p>
        <p>{words.readBack}</p>
        <div class="labelled">
          <label for={`${id}-word`}>{words.type}</label>
          <input
            id={`${id}-word`}
            type="text"
            autofocus
            autoComplete="off"
            autoCapitalize="off"
            spellcheck={false}
            value={typed}
            onInput={(event) => setTyped(event.currentTarget.value)}
          />
        </div>
      </form>
    </Dialog>
  );
}
