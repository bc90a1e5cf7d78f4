import type { ComponentChildren } from "preact";
import { useEffect, useId, useRef } from "preact/hooks";
import { texts } from "../texts";

export interface DialogProps {
  title: string;
  /** Called when the dialog is left, by its button, Escape or a click beside it. */
  onClose(): void;
  children: ComponentChildren;
  /** Buttons beside the one that closes. */
  actions?: ComponentChildren;
}

/** A modal dialog: the focus stays in it and returns to where it was. */
export function Dialog({ title, onClose, children, actions }: DialogProps) {
  const dialog = useRef<HTMLDialogElement>(null);
  const heading = useId();
  useEffect(() => {
    const before = document.activeElement;
    const shown = dialog.current;
    shown?.showModal();
    return () => {
      shown?.close(); // nothing outside of an open modal dialog takes the focus
      if (before instanceof HTMLElement && before.isConnected) before.focus();
    };
  }, []);
  return (
    <dialog
      ref={dialog}
      aria-labelledby={heading}
      onCancel={(event) => {
        event.preventDefault();
        onClose();
      }}
      onClick={(event) => {
        if (event.target === dialog.current) onClose();
      }}
    >
      <div class="dialog-body">
        <h2 id={heading}>{title}</h2>
        {children}
        <div class="dialog-actions">
          {actions}
          <button type="button" onClick={onClose}>{texts.close}</button>
        </div>
      </div>
    </dialog>
  );
}
