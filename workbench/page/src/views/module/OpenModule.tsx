import { useState } from "preact/hooks";
import type { Start } from "../../api/types";
import { ConfiguredModule } from "../../parameters/ConfiguredModule";
import { Findings } from "../../parts/Findings";
import { Tabs } from "../../parts/Tabs";
import { useStore } from "../../state/store";
import { texts } from "../../texts";
import type { AddModule } from "../catalogue/Results";
import { ChannelTable } from "./ChannelTable";
import { FileBytes } from "./FileBytes";
import { ModuleHead } from "./ModuleHead";
import { ProcessImage } from "./ProcessImage";
import { Properties } from "./Properties";
import type { Editing, ModuleSession } from "./session";

type Tab = keyof typeof texts.module.tab;

const tabs = (Object.keys(texts.module.tab) as Tab[]).map((key) => ({ key, text: texts.module.tab[key] }));

interface PanelProps {
  tab: Tab;
  session: ModuleSession;
  editing: Editing;
  channel: string | null;
  onChannel(id: string): void;
}

function Panel({ tab, session, editing, channel, onChannel }: PanelProps) {
  const { module, configured, refused } = editing;
  switch (tab) {
    case "parameters":
      return (
        <ConfiguredModule
          device={module.device}
          configured={configured}
          refused={refused}
          onSet={(id, text) => session.set(id, text)}
        />
      );
    case "image": return <ProcessImage module={module} onChannel={onChannel} />;
    case "channels": return <ChannelTable channels={module.device.channels} chosen={channel} />;
    case "properties": return <Properties properties={module.device.properties} />;
    case "file": return <FileBytes reference={session.reference} />;
  }
}

/** A module that is open. */
export function OpenModule({ session, start, onAdd }: { session: ModuleSession; start: Start; onAdd: AddModule | undefined }) {
  const editing = useStore(session.state);
  const [tab, setTab] = useState<Tab>("parameters");
  const [channel, setChannel] = useState<string | null>(null);
  const showChannel = (id: string): void => {
    setChannel(id);
    setTab("channels");
  };
  return (
    <section class="module">
      <ModuleHead session={session} editing={editing} exports={start.exports.module} onAdd={onAdd} />
      <Findings findings={editing.notes} />
      <Tabs<Tab> label={texts.module.tabs} tabs={tabs} chosen={tab} onChoose={(key) => setTab(key)}>
        <Panel tab={tab} session={session} editing={editing} channel={channel} onChannel={showChannel} />
      </Tabs>
    </section>
  );
}
