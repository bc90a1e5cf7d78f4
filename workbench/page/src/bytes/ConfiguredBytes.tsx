import { useMemo, useState } from "preact/hooks";
import type { Config, ConfigParameter } from "../api/types";
import { useStore } from "../state/store";
import { texts } from "../texts";
import { ByteTable } from "./ByteTable";
import type { Light } from "./light";
import { bytesOf, coverOf, heldAt } from "./places";
import type { Cover } from "./places";

function bitsText(one: ConfigParameter): string {
  if (one.bit_length === 0) return "";
  return ` (${texts.parameters.bitsAt(one.byte, one.bit_offset, one.bit_offset + one.bit_length - 1)})`;
}

/** Says what a byte is and which values hold it. */
class Descriptions {
  private readonly byId: ReadonlyMap<string, ConfigParameter>;

  constructor(private readonly config: Config, private readonly bytes: readonly string[], private readonly cover: Cover) {
    this.byId = new Map(config.parameters.map((one) => [one.id, one]));
  }

  byte(index: number): string {
    const hex = this.bytes[index] ?? "";
    return this.config.fieldbus === "raw"
      ? texts.bytes.cell(index, hex)
      : texts.bytes.registerCell(Math.floor(index / 2), index % 2 === 0, hex);
  }

  binary(index: number): string {
    return texts.bytes.binary(this.bytes[index] ?? "");
  }

  values(index: number): readonly string[] {
    return heldAt(this.cover, index).map(({ id }) => this.value(id));
  }

  value(id: string): string {
    const one = this.byId.get(id);
    if (one === undefined) return "";
    return `${one.name}: ${one.shown}${this.config.fieldbus === "raw" ? bitsText(one) : ""}`;
  }

  whole(index: number): string {
    const values = this.values(index);
    return [this.byte(index), values.length === 0 ? texts.bytes.nothingHere : values.join("; ")].join(". ");
  }
}

function Info({ touched, descriptions, light }: { touched: number | null; descriptions: Descriptions; light: Light }) {
  const lit = useStore(light.lit);
  if (touched === null) {
    const values = [...lit].map((id) => descriptions.value(id)).filter((text) => text !== "");
    return <p class="byte-info">{values.length === 0 ? <span class="faint">{texts.bytes.help}</span> : values.join("; ")}</p>;
  }
  const values = descriptions.values(touched);
  return (
    <p class="byte-info">
      <span>{descriptions.byte(touched)} <span class="mono">{descriptions.binary(touched)}</span></span>
      {values.length === 0 ? <span class="faint">{texts.bytes.nothingHere}</span> : values.map((text) => <span key={text}>{text}</span>)}
    </p>
  );
}

function markedOf(parameters: readonly ConfigParameter[]): ReadonlySet<number> {
  const marked = new Set<number>();
  for (const one of parameters) {
    for (let index = one.byte; one.changed && index < one.byte + one.size; ++index) marked.add(index);
  }
  return marked;
}

/** The bytes of a parameter image or of Modbus registers, lit together with the fields. */
export function ConfiguredBytes({ config, light }: { config: Config; light: Light }) {
  const isImage = config.fieldbus === "raw";
  const bytes = useMemo(() => bytesOf(config.bytes), [config.bytes]);
  const cover = useMemo(() => coverOf(config.parameters, isImage), [config.parameters]);
  const marked = useMemo(() => markedOf(config.parameters), [config.parameters]);
  const descriptions = useMemo(() => new Descriptions(config, bytes, cover), [config]);
  const [touched, setTouched] = useState<number | null>(null);
  const title = isImage ? texts.bytes.parameterImage : texts.bytes.registers;
  const size = isImage ? texts.bytes.size(config.size) : texts.bytes.registerCount(config.size / 2);
  const choose = (index: number, hasFocus: boolean): void => {
    const id = heldAt(cover, index)[0]?.id;
    if (id !== undefined) light.show(id, hasFocus);
  };
  return (
    <section class="bytes">
      <h2>{title} <span class="faint">{size}</span></h2>
      {bytes.length === 0
        ? <p class="faint">{texts.bytes.empty}</p>
        : (
          <>
            <ByteTable
              label={title}
              bytes={bytes}
              counted={isImage ? "byte" : "register"}
              cover={cover}
              marked={marked}
              light={light}
              describe={(index) => descriptions.whole(index)}
              onTouch={setTouched}
              onChoose={choose}
            />
            <Info touched={touched} descriptions={descriptions} light={light} />
          </>
        )}
    </section>
  );
}
