import { useEffect, useRef } from "preact/hooks";
import type { Extent } from "../../api/stationTypes";
import { Picture } from "../../parts/Picture";
import { memo } from "../../parts/memo";
import { useStore } from "../../state/store";
import { texts } from "../../texts";
import { draft } from "./draft";
import { placeName } from "./naming";
import { usePictures } from "./pictures";
import { select } from "./planning";
import { useRowDrag } from "./rowDrag";
import { removeSelected, stepSelected } from "./rowMoves";
import type { GapPart, Place, Row as RowModel } from "./rowPlaces";

const words = texts.station;

function Bytes({ side, extent, pin }: { side: "in" | "out"; extent: Extent | null; pin: number | null }) {
  if (extent === null && pin === null) return null;
  return (
    <span class={`entry-bytes ${side}`}>
      <abbr title={words.images[side]}>{words.sides[side]}</abbr>{" "}
      {extent === null ? texts.nothing : words.range(extent.offset, extent.size)}
      {pin !== null && (
        <span class="pin" title={words.pinnedAt(pin)}>
          <span aria-hidden="true"> {words.pinMark}</span><span class="heard">{words.pinnedAt(pin)}</span>
        </span>
      )}
    </span>
  );
}

function Gaps({ parts }: { parts: readonly GapPart[] }) {
  if (parts.length === 0) return null;
  return (
    <span class="entry-gaps">
      {parts.map((part) => (
        <span key={`${part.side}${part.offset}`} class={`entry-gap ${part.reason} ${part.side}`}>
          <span>{words.reasons[part.reason]}</span>
          <span>{words.sides[part.side]} {words.range(part.offset, part.size)}</span>
        </span>
      ))}
    </span>
  );
}

function Card({ place, picture }: { place: Place; picture: string | null }) {
  const { entry, module } = place;
  return (
    <>
      {entry.reference === ""
        ? <span class="picture reserved-picture" aria-hidden="true" />
        : <Picture source={picture} label="" />}
      <span class="entry-words">
        <span class="entry-position">{module === null ? texts.nothing : words.position(module.position)}</span>
        <span class="entry-name">{placeName(place)}</span>
        <span class="entry-label">{entry.reference === "" ? words.reserved : module?.label ?? entry.reference}</span>
        <Bytes side="in" extent={place.in} pin={entry.at.in} />
        <Bytes side="out" extent={place.out} pin={entry.at.out} />
        {place.bitsWithoutChannel > 0 && <span class="faint">{words.withoutChannel(place.bitsWithoutChannel)}</span>}
      </span>
    </>
  );
}

interface ItemProps {
  place: Place;
  index: number;
  picture: string | null;
  isSelected: boolean;
  mark: "before" | "after" | "";
}

const Item = memo(function Item({ place, index, picture, isSelected, mark }: ItemProps) {
  const isReserve = place.entry.reference === "";
  return (
    <li class={`entry-item ${mark === "" ? "" : `drop-${mark}`}`} data-entry={index} draggable>
      <Gaps parts={place.before} />
      <button
        type="button"
        class={`entry-card${isReserve ? " reserve" : ""}`}
        aria-pressed={isSelected}
        aria-keyshortcuts="Alt+ArrowLeft Alt+ArrowRight Delete"
        tabIndex={isSelected ? 0 : -1}
        onClick={() => select(index)}
      >
        <Card place={place} picture={picture} />
      </button>
    </li>
  );
});

const steps: Record<string, (entry: number, count: number) => number> = {
  ArrowLeft: (entry) => entry - 1,
  ArrowUp: (entry) => entry - 1,
  ArrowRight: (entry) => entry + 1,
  ArrowDown: (entry) => entry + 1,
  Home: () => 0,
  End: (_, count) => count - 1,
};

const moves: Record<string, -1 | 1> = { ArrowLeft: -1, ArrowUp: -1, ArrowRight: 1, ArrowDown: 1 };

function onRowKey(event: KeyboardEvent, entry: number, count: number): void {
  const move = event.altKey ? moves[event.key] : undefined;
  const step = event.altKey || event.ctrlKey ? undefined : steps[event.key];
  if (move !== undefined) void stepSelected(move);
  else if (event.key === "Delete") void removeSelected();
  else if (step !== undefined) select(Math.min(count - 1, Math.max(0, step(entry, count))));
  else return;
  event.preventDefault();
}

/** Scrolls the row alone: scrollIntoView would also change where Tab goes next, in some browsers. */
function bringIntoSight(list: HTMLElement, entry: HTMLElement): void {
  const row = list.getBoundingClientRect();
  const place = entry.getBoundingClientRect();
  list.scrollLeft += Math.max(0, place.right - row.right) - Math.max(0, row.left - place.left);
  list.scrollTop += Math.max(0, place.bottom - row.bottom) - Math.max(0, row.top - place.top);
}

/** Keeps the selected entry in sight, and the focus on it while it is within the row. */
function useSelectedInSight(selected: number | null, row: RowModel): { current: HTMLOListElement | null } {
  const list = useRef<HTMLOListElement>(null);
  useEffect(() => {
    const button = list.current?.querySelector<HTMLElement>(`[data-entry="${selected ?? 0}"] > button`) ?? null;
    if (list.current === null || button === null) return;
    if (!list.current.contains(document.activeElement)) bringIntoSight(list.current, button);
    else if (button !== document.activeElement) button.focus();
  }, [selected, row]);
  return list;
}

function markOf(index: number, target: number | null, count: number): ItemProps["mark"] {
  if (target === index) return "before";
  return target === count && index === count - 1 ? "after" : "";
}

/** The modules and reserved places in their order, with the gaps between them. */
export function Row({ row }: { row: RowModel }) {
  const selected = useStore(draft, (value) => value.selected);
  const pictures = usePictures();
  const drag = useRowDrag();
  const list = useSelectedInSight(selected, row);
  const count = row.places.length;
  if (count === 0) return <p class="empty-row">{words.emptyRow}</p>;
  return (
    <section aria-label={words.row}>
      <ol
        class="entry-row"
        ref={list}
        onKeyDown={(event) => selected !== null && onRowKey(event, selected, count)}
        onDragStart={drag.onDragStart}
        onDragOver={drag.onDragOver}
        onDrop={drag.onDrop}
        onDragEnd={drag.onDragEnd}
      >
        {row.places.map((place, index) => (
          <Item
            key={index}
            place={place}
            index={index}
            picture={pictures[place.entry.reference] ?? null}
            isSelected={index === selected}
            mark={markOf(index, drag.target, count)}
          />
        ))}
        {row.after.length > 0 && <li class="entry-item"><Gaps parts={row.after} /></li>}
      </ol>
    </section>
  );
}
