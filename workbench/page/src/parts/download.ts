import type { Download } from "../api/client";
import { Refusal } from "../api/client";
import { announce } from "../state/announcements";
import { texts } from "../texts";

const keptMs = 60_000;

/** Gives a file to the browser as a download. */
export function give(file: Download): void {
  const address = URL.createObjectURL(file.content);
  const link = document.createElement("a");
  link.href = address;
  link.download = file.name;
  link.click();
  setTimeout(() => URL.revokeObjectURL(address), keptMs);
}

/** Gives a file of the server to the browser as a download; says if it could not be made. */
export async function download(making: Promise<Download>): Promise<void> {
  try {
    const file = await making;
    give(file);
    announce(texts.downloads.done(file.name));
  } catch (error) {
    const reason = error instanceof Refusal ? error.findings.map((one) => one.text).join(" ") : "";
    announce(texts.downloads.failed(reason === "" ? (error as Error).message : reason), true);
  }
}
