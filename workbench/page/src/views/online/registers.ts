import { texts } from "../../texts";

/** Returns the address of a register, decimal and hexadecimal. */
export function registerText(address: number): string {
  return texts.online.register(address, address.toString(16));
}

/** Returns the words of registers as they are on the bus. */
export function registersText(words: readonly number[] | string): string {
  return typeof words === "string" ? words : words.map((word) => word.toString(16).padStart(4, "0")).join(" ");
}
