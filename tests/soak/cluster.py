#!/usr/bin/env python3
"""Kills the leader of a cluster under Patroni in the middle of populates, and prints how long readers wait.

Usage: cluster.py BIN [--short]

BIN holds mxtool and catalogue-worker; the examples are built beside it. Starts three servers of PostgreSQL, each
with its Patroni, and etcd on free ports of the loopback interface, in a new folder below /tmp; they end with this
process, however it ends. --short: two kills instead of twenty. Ends with 1 at the first failure.
"""
from __future__ import annotations

import http.client
import json
import os
import pathlib
import random
import signal
import socket
import subprocess
import sys
import tempfile
import time
import urllib.error
import urllib.request
from typing import Dict, List, Optional, Tuple

from replicated_catalogue import Caller, Catalogue, Run, Watcher, expect, fail, said_in_one_sentence
from server_programs import PROGRAMS, as_server_user, give_to_server_user, wait_until

SHORT = "--short" in sys.argv
KILLS = 2 if SHORT else 20
MODULES = 300
# Ends what Patroni leaves when it is killed. Patroni and etcd end with this process.
KEEPER = """cat >/dev/null
sleep 0.5
for file in "$0"/*/data/postmaster.pid; do
    [ ! -e "$file" ] || kill -QUIT "$(head -1 "$file")"
done
sleep 1
rm -rf "$0"
"""


def free_ports(count: int) -> List[int]:
    """Returns ports of the loopback interface that nothing uses."""
    sockets = [socket.socket() for _ in range(count)]
    for one in sockets:
        one.bind(("127.0.0.1", 0))
    ports = [one.getsockname()[1] for one in sockets]
    for one in sockets:
        one.close()
    return ports


def start(folder: pathlib.Path, name: str, *words: str) -> subprocess.Popen[bytes]:
    """Starts a program that ends with this process, its output in a file of `folder`."""
    with (folder / f"{name}.log").open("ab") as log:
        return subprocess.Popen([*as_server_user(), "setpriv", "--pdeathsig", "KILL", *words],
                                stdin=subprocess.DEVNULL, stdout=log, stderr=log, cwd=folder)


class Node:
    """A server and its Patroni."""

    def __init__(self, folder: pathlib.Path, name: str, etcd: int) -> None:
        self.folder = folder / name
        self.name = name
        self.port, self.api = free_ports(2)
        self.folder.mkdir()
        give_to_server_user(self.folder)
        self.configuration = self.folder / "patroni.yml"
        self.configuration.write_text(json.dumps(self.settings(etcd)), "utf-8")
        self.process: Optional[subprocess.Popen[bytes]] = None

    def settings(self, etcd: int) -> Dict[str, object]:
        """Returns what Patroni reads: a leader that says nothing for 5 seconds is replaced."""
        server = {
            "listen": f"127.0.0.1:{self.port}", "connect_address": f"127.0.0.1:{self.port}",
            "data_dir": str(self.folder / "data"), "bin_dir": str(PROGRAMS),
            "pgpass": str(self.folder / "pgpass"),
            "authentication": {"superuser": {"username": "tester", "password": "x"},
                               "replication": {"username": "replicator", "password": "x"}},
            "parameters": {"unix_socket_directories": str(self.folder),
                           "shared_buffers": "16MB", "max_connections": 50},
        }
        return {
            "scope": "catalogue", "name": self.name,
            "restapi": {"listen": f"127.0.0.1:{self.api}",
                        "connect_address": f"127.0.0.1:{self.api}"},
            "etcd3": {"host": f"127.0.0.1:{etcd}"},
            "bootstrap": {
                "dcs": {"ttl": 5, "loop_wait": 1, "retry_timeout": 2,
                        "postgresql": {"use_pg_rewind": True}},
                "initdb": [{"encoding": "UTF8"}, {"locale": "C.UTF-8"}, {"auth": "trust"}],
                "pg_hba": ["host all all 127.0.0.1/32 trust",
                           "host replication all 127.0.0.1/32 trust", "local all all trust"],
            },
            "postgresql": server,
        }

    def start(self) -> None:
        """Starts Patroni, which starts the server."""
        self.process = start(self.folder, "patroni", "/usr/bin/patroni", str(self.configuration))

    def is_in_role(self, role: str) -> bool:
        """Returns whether Patroni says that the server is the "primary", or a "replica"."""
        try:
            with urllib.request.urlopen(f"http://127.0.0.1:{self.api}/{role}", timeout=5) as answer:
                return bool(answer.status == 200)
        except (urllib.error.URLError, OSError):
            return False

    def followers(self) -> int:
        """Returns how many servers receive the changes of this one as they are made."""
        try:
            with urllib.request.urlopen(f"http://127.0.0.1:{self.api}/patroni", timeout=5) as answer:
                return sum(server["state"] == "streaming"
                           for server in json.load(answer).get("replication", []))
        except (urllib.error.URLError, OSError, ValueError, http.client.HTTPException):
            return 0

    def kill(self) -> None:
        """Kills Patroni and every process of the server."""
        server = int((self.folder / "data/postmaster.pid").read_text("utf-8").split()[0])
        children = children_of(server)
        expect(self.process is not None, "a node does not run")
        if self.process is not None:
            self.process.kill()
            self.process.wait()
        for process in [server, *children]:
            try:
                os.kill(process, signal.SIGKILL)
            except ProcessLookupError:
                pass


def children_of(parent: int) -> List[int]:
    """Returns the processes that `parent` started and that still run."""
    children = []
    for status in pathlib.Path("/proc").glob("[0-9]*/stat"):
        try:
            words = status.read_text("utf-8", "replace").rsplit(")", 1)[1].split()
        except OSError:
            continue
        if int(words[1]) == parent:
            children.append(int(status.parent.name))
    return children


class Cluster:
    """Three nodes, and etcd, in which they agree on a leader."""

    def __init__(self, folder: pathlib.Path) -> None:
        clients, peers = free_ports(2)
        addresses = [f"http://127.0.0.1:{port}" for port in (clients, peers)]
        self.etcd = start(folder, "etcd", "/usr/bin/etcd", "--data-dir", str(folder / "etcd"),
                          "--listen-client-urls", addresses[0], "--advertise-client-urls",
                          addresses[0], "--listen-peer-urls", addresses[1],
                          "--initial-advertise-peer-urls", addresses[1], "--initial-cluster",
                          f"default={addresses[1]}")
        self.nodes = [Node(folder, f"node{number}", clients) for number in (1, 2, 3)]
        self.nodes[0].start()
        wait_until(lambda: self.nodes[0].is_in_role("primary"), "the first node leads", 60)
        for node in self.nodes[1:]:
            node.start()
        self.wait_until_complete()

    def url(self, attributes: str) -> str:
        """Returns the URL of the database with all hosts."""
        ports = ",".join(str(node.port) for node in self.nodes)
        hosts = ",".join("127.0.0.1" for node in self.nodes)
        return (f"postgresql:host={hosts} port={ports} user=tester dbname=postgres"
                f" target_session_attrs={attributes}")

    def leader(self) -> Node:
        """Returns the node that leads; there must be one."""
        for node in self.nodes:
            if node.is_in_role("primary"):
                return node
        fail("no node leads")

    def is_complete(self) -> bool:
        """Returns whether one node leads and two follow it, without a lag.

        Patroni knows the lag from the leader's last report: after a change of the leader it says that there is none
        of replicas that have not found the new one.
        """
        leaders = [node for node in self.nodes if node.is_in_role("primary")]
        return (len(leaders) == 1 and leaders[0].followers() == 2
                and sum(node.is_in_role("replica?lag=0") for node in self.nodes) == 2)

    def wait_until_complete(self) -> None:
        """Waits until the cluster could lose another leader."""
        wait_until(self.is_complete, "two replicas follow a leader", 120)


class Kills:
    """The populates that lose their leader, and what became of them."""

    def __init__(self, cluster: Cluster, catalogue: Catalogue) -> None:
        self.cluster = cluster
        self.catalogue = catalogue
        self.writing = cluster.url("any")
        self.current = "a"
        self.sentences: Dict[str, int] = {}
        self.outcomes = {"ended": 0, "old": 0, "new": 0}
        self.longest = 0.0
        self.populated("b")
        begin = time.monotonic()
        self.populated("a")
        self.usual = time.monotonic() - begin
        cluster.wait_until_complete()

    def populated(self, state: str) -> None:
        """Populates, which must succeed."""
        run = self.catalogue.populate(state, self.writing)
        expect(run.code == 0 and run.errors == "", f"populate: {run}")

    def note(self, run: Run) -> None:
        """Counts what a populate said that failed."""
        said = said_in_one_sentence(run).split(": connection to server")[0]
        self.sentences[said] = self.sentences.get(said, 0) + 1

    def kill_one(self) -> None:
        """A leader is killed at a random moment of a populate."""
        following = "b" if self.current == "a" else "a"
        process = self.catalogue.start_populate(following, self.writing)
        time.sleep(random.uniform(0, 2 * self.usual))  # slower while others read
        leader = self.cluster.leader()
        leader.kill()
        begin = time.monotonic()
        output, errors = process.communicate()
        if process.returncode == 0:
            self.outcomes["ended"] += 1
        else:
            self.note(Run(process.returncode, output, errors))
        found = self.catalogue.state(self.cluster.url("prefer-standby"))
        self.outcomes["old" if found == self.current else "new"] += 1
        self.populate_again(following)
        self.longest = max(self.longest, time.monotonic() - begin)
        leader.start()
        self.cluster.wait_until_complete()

    def populate_again(self, state: str) -> None:
        """Runs it until there is a leader again."""
        end = time.monotonic() + 120
        while True:
            run = self.catalogue.populate(state, self.writing)
            if run.code == 0:
                break
            self.note(run)
            expect(time.monotonic() < end, f"no populate succeeds: {run}")
            time.sleep(0.2)
        found = self.catalogue.state(self.cluster.url("read-write"))
        expect(found == state, "a populate stores nothing")
        self.current = state

    def print(self) -> None:
        """Prints the counts."""
        print(f"Cluster: the leader was killed {KILLS} times in a populate of {MODULES} modules "
              f"({self.usual:.2f} s): {self.outcomes['old']} times the old catalogue, "
              f"{self.outcomes['new']} times the new one ({self.outcomes['ended']} populates had "
              f"ended); at most {self.longest:.1f} s until the next one had succeeded")
        for said, count in sorted(self.sentences.items()):
            print(f"Cluster:   {count} times: {said}")


def print_readers(watchers: List[Tuple[str, Watcher]], caller: Caller) -> None:
    """Ends the readers and prints how long they were without an answer."""
    for what, watcher in watchers:
        reads, failures, longest, reasons = watcher.end()
        print(f"Cluster: one object, {what}: {reads} reads, {failures} failed, {longest:.2f} s "
              "without an answer at most")
        for reason in reasons:
            print(f"Cluster:   {reason}")
    calls, errors, longest = caller.end()
    print(f"Cluster: mxtool devices: {calls} calls, {len(errors)} failed, {longest:.2f} s without an "
          "answer at most")


def run_kills(folder: pathlib.Path, binaries: pathlib.Path) -> None:
    """Runs the test with a cluster in `folder`."""
    cluster = Cluster(folder)
    kills = Kills(cluster, Catalogue(binaries, folder / "files", MODULES))
    watchers = [(what, Watcher(kills.catalogue, cluster.url(what)))
                for what in ("prefer-standby", "any", "read-write")]
    caller = Caller(kills.catalogue, cluster.url("prefer-standby"))
    for _ in range(KILLS):
        kills.kill_one()
    kills.print()
    print_readers(watchers, caller)


def main() -> None:
    """Makes the folder, which the keeper removes."""
    if len(sys.argv) < 2:
        fail("expected the folder of the programs")
    folder = pathlib.Path(tempfile.mkdtemp(prefix="soak-cluster-", dir="/tmp"))
    give_to_server_user(folder)
    with subprocess.Popen(["sh", "-c", KEEPER, str(folder)], stdin=subprocess.PIPE,
                          start_new_session=True) as keeper:
        try:
            run_kills(folder, pathlib.Path(sys.argv[1]))
        finally:
            for process in children_of(os.getpid()):
                if process != keeper.pid:
                    os.kill(process, signal.SIGKILL)


main()
