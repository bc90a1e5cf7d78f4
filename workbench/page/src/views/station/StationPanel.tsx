import { useState } from "preact/hooks";
import type { StationAnswer } from "../../api/stationTypes";
import { Tabs } from "../../parts/Tabs";
import { texts } from "../../texts";
import { ChannelNotes } from "./ChannelNotes";
import type { Place } from "./rowPlaces";
import { SelectedEntry } from "./SelectedEntry";
import { StationChannelTable } from "./StationChannelTable";
import { StationImages } from "./StationImages";

type Tab = keyof typeof texts.station.tabs;

const tabs = (Object.keys(texts.station.tabs) as Tab[]).map((key) => ({ key, text: texts.station.tabs[key] }));

interface PanelProps {
  tab: Tab;
  /** The newest answer without errors; null: there was none yet. */
  planned: StationAnswer | null;
  selected: Place | null;
  chosen: string | null;
  onShow(key: string): void;
}

function Panel({ tab, planned, selected, chosen, onShow }: PanelProps) {
  const plan = planned?.plan ?? null;
  const channels = planned?.channels ?? null;
  if (tab === "entry") return selected === null ? <p class="faint">{texts.station.emptyRow}</p> : <SelectedEntry place={selected} />;
  if (plan === null || channels === null) return <p class="faint">{texts.station.notPlanned}</p>;
  switch (tab) {
    case "notes":
      return selected === null || selected.module === null
        ? <p class="faint">{texts.station.notes.noModule}</p>
        : <ChannelNotes key={selected.entry.index} entry={selected.entry} channels={channels} />;
    case "images": return <StationImages plan={plan} channels={channels} onShow={onShow} />;
    case "channels": return <StationChannelTable channels={channels} chosen={chosen} />;
  }
}

/** The selected entry, and the images and channels of the whole station. */
export function StationPanel({ planned, selected }: Pick<PanelProps, "planned" | "selected">) {
  const [tab, setTab] = useState<Tab>("entry");
  const [chosen, setChosen] = useState<string | null>(null);
  const show = (key: string): void => {
    setChosen(key);
    setTab("channels");
  };
  return (
    <Tabs<Tab> label={texts.station.parts} tabs={tabs} chosen={tab} onChoose={(key) => setTab(key)}>
      <Panel tab={tab} planned={planned} selected={selected} chosen={chosen} onShow={show} />
    </Tabs>
  );
}
