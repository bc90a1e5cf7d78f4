/** Moves the focus to the control of a field; of several radio buttons to the chosen one. */
export function focusControl(field: Element | null): void {
  field?.querySelector<HTMLElement>("input:checked, input:not([type=radio]), select, input")?.focus();
}
