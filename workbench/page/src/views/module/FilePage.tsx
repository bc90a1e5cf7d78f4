import { useMemo, useState } from "preact/hooks";
import { ByteTable } from "../../bytes/ByteTable";
import { Light } from "../../bytes/light";
import { texts } from "../../texts";
import type { ExplainedFile } from "./explained";

interface FilePageProps {
  file: ExplainedFile;
  offset: number;
  size: number;
  onOffset(offset: number): void;
}

function Meaning({ file, touched }: { file: ExplainedFile; touched: number | null }) {
  const part = touched === null ? undefined : file.partAt(touched);
  if (part === undefined) return <div class="byte-info"><p class="faint">{texts.file.help}</p></div>;
  return (
    <div class="byte-info">
      <p><strong>{file.groupOf(part)}</strong>{part.subject !== "" && ` · ${part.subject}`}</p>
      <p>{texts.file.part(part.field, part.offset, part.length)} <span class="mono">{part.bytes}</span></p>
      {part.value !== null && <p class="mono">{part.value}</p>}
      {part.meaning !== "" && <p>{part.meaning}</p>}
      {!part.read && <p class="faint">{texts.file.notRead}</p>}
    </div>
  );
}

/** A page of the file's bytes, and the meaning of the one that is touched. */
export function FilePage({ file, offset, size, onOffset }: FilePageProps) {
  const light = useMemo(() => new Light(), []);
  const [touched, setTouched] = useState<number | null>(null);
  const all = file.explanation.size;
  const end = Math.min(offset + size, all);
  const bytes = useMemo(() => file.bytes.slice(offset, end), [file, offset, end]);
  const title = texts.file.page(offset, Math.max(offset, end - 1), all);
  const isFirst = offset === 0;
  const isLast = end >= all;
  return (
    <section class="box bytes file-page">
      <h2>{title}</h2>
      <ByteTable
        label={title}
        bytes={bytes}
        first={offset}
        counted="byte"
        cover={file.cover}
        light={light}
        describe={(index) => file.describe(index)}
        onTouch={setTouched}
      />
      <Meaning file={file} touched={touched} />
      <div class="tools">
        <button type="button" class="small" aria-disabled={isFirst} onClick={() => !isFirst && onOffset(Math.max(0, offset - size))}>{texts.file.before}</button>
        <button type="button" class="small" aria-disabled={isLast} onClick={() => !isLast && onOffset(end)}>{texts.file.after}</button>
      </div>
    </section>
  );
}
