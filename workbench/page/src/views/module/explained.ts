import type { ExplainPart, Explanation } from "../../api/types";
import type { Cover, Held } from "../../bytes/places";
import { bytesOf } from "../../bytes/places";
import { texts } from "../../texts";

/** The bytes of a file, each with the part that it belongs to. */
export class ExplainedFile {
  readonly bytes: readonly string[];
  readonly cover: Cover;

  constructor(readonly explanation: Explanation) {
    const bytes: string[] = [];
    const cover = new Map<number, readonly Held[]>();
    explanation.parts.forEach((part, index) => {
      const held = [{ id: String(index), mask: 0xff, isBits: false }];
      bytesOf(part.bytes).forEach((hex, position) => {
        bytes[part.offset + position] = hex;
        cover.set(part.offset + position, held);
      });
    });
    this.bytes = bytes;
    this.cover = cover;
  }

  partAt(offset: number): ExplainPart | undefined {
    const id = this.cover.get(offset)?.[0]?.id;
    return id === undefined ? undefined : this.explanation.parts[Number(id)];
  }

  groupOf(part: ExplainPart): string {
    const group = part.group === null ? undefined : this.explanation.groups[part.group];
    if (group === undefined) return texts.file.outside;
    return group.name === "" ? group.id : group.name;
  }

  /** Says what a byte is, in one line. */
  describe(offset: number): string {
    const part = this.partAt(offset);
    const cell = texts.bytes.cell(offset, this.bytes[offset] ?? "");
    if (part === undefined) return cell;
    const value = part.value === null ? "" : `= ${part.value}`;
    const read = part.read ? "" : texts.file.notRead;
    const words = [this.groupOf(part), part.subject, `${part.field} ${value}`.trim(), part.meaning, read];
    return `${cell}. ${words.filter((word) => word !== "").join(", ")}`;
  }
}
