#!/usr/bin/env python3
"""Loses the primary of a catalogue with a replica in the middle of a populate, and promotes the replica.

Usage: fail_over.py BIN

BIN holds mxtool and catalogue-worker; the examples are built beside it. Starts a primary and a streaming
replica of it in a new folder below /tmp, with Unix sockets there and no network. Ends with 1 at the first
failure.
"""
from __future__ import annotations

import pathlib
import signal
import subprocess
import sys
import tempfile
from typing import List, Optional

from replicated_catalogue import Caller, Catalogue, Run, Watcher, expect, fail, said_in_one_sentence
from server_programs import PROGRAMS, as_server_user, give_to_server_user, wait_until


def run_program(program: str, *words: str) -> None:
    """Runs a program of PostgreSQL as the user of the server."""
    run = subprocess.run([*as_server_user(), str(PROGRAMS / program), *words], check=False,
                         capture_output=True, text=True, cwd="/tmp")
    expect(run.returncode == 0, f"{program}: {run.stderr}")


class Server:
    """One of the two servers: its data, its socket and its process."""

    def __init__(self, folder: pathlib.Path, name: str, port: int) -> None:
        self.data = folder / name
        self.socket = folder
        self.port = port
        self.process: Optional[subprocess.Popen[bytes]] = None

    def start(self) -> None:
        """Starts the server; it ends with this process."""
        with (self.socket / f"{self.data.name}.log").open("ab") as log:
            self.process = subprocess.Popen(
                [*as_server_user(), "setpriv", "--pdeathsig", "QUIT", str(PROGRAMS / "postgres"),
                 "-D", str(self.data), "-k", str(self.socket), "-p", str(self.port),
                 "-c", "listen_addresses=", "-c", "fsync=off", "-c", "shared_buffers=8MB",
                 "-c", "max_connections=30", "-c", "max_wal_senders=3"],
                stdout=log, stderr=log, cwd="/tmp")
        ready = [str(PROGRAMS / "pg_isready"), "-q", "-h", str(self.socket), "-p", str(self.port)]
        wait_until(lambda: subprocess.run(ready, check=False).returncode == 0, "a server starts")

    def lose(self) -> None:
        """Stops the server at once: its connections end, nothing is written."""
        if self.process is not None:
            self.process.send_signal(signal.SIGQUIT)
            self.process.wait()

    def words(self) -> List[str]:
        """Returns the call of psql for this server."""
        return [str(PROGRAMS / "psql"), "-qAtX", "-h", str(self.socket), "-p", str(self.port),
                "-U", "tester", "postgres"]

    def ask(self, question: str) -> str:
        """Returns the server's answer to a statement."""
        run = subprocess.run([*self.words(), "-c", question], capture_output=True, text=True,
                             check=False)
        expect(run.returncode == 0, f"{question}: {run.stderr}")
        return run.stdout.strip()

    def holds(self, question: str) -> bool:
        """Returns whether the server answers a question with yes."""
        return self.ask(f"SELECT {question}") == "t"


def primary_and_replica(folder: pathlib.Path) -> List[Server]:
    """Starts both."""
    primary, replica = Server(folder, "primary", 5432), Server(folder, "replica", 5433)
    run_program("initdb", "-D", str(primary.data), "-A", "trust", "-U", "tester", "-E", "UTF8",
                "--locale=C.UTF-8", "--no-sync")
    primary.start()
    run_program("pg_basebackup", "-D", str(replica.data), "-h", str(folder), "-p", "5432", "-U",
                "tester", "-R", "-X", "stream", "--checkpoint=fast", "--no-sync")
    replica.start()
    return [primary, replica]


def wait_for_replay(primary: Server, replica: Server) -> None:
    """Waits until the replica has what the primary has."""
    place = primary.ask("SELECT pg_current_wal_lsn()")
    wait_until(lambda: replica.holds(f"pg_last_wal_replay_lsn() >= '{place}'"), "a replay")


class FailOver:
    """The test, step by step."""

    def __init__(self, binaries: pathlib.Path, folder: pathlib.Path) -> None:
        self.catalogue = Catalogue(binaries, folder / "files", 200)
        self.primary, self.replica = primary_and_replica(folder)
        words = f"host={folder},{folder} port=5433,5432 user=tester dbname=postgres"
        self.url = f"postgresql:{words}"
        self.primary_first = self.url.replace("5433,5432", "5432,5433")
        self.reading = f"{self.url} target_session_attrs=prefer-standby"

    def writes_find_the_primary(self) -> None:
        """The replica is the first host; a URL that reads from it can write too."""
        for state in "ba":
            run = self.catalogue.populate(state, self.reading)
            expect(run.code == 0 and run.errors == "", f"populate: {run}")
        wait_for_replay(self.primary, self.replica)
        self.catalogue.worker("change", self.reading)
        wait_for_replay(self.primary, self.replica)

    def refused_where_only_replicas_are_asked_for(self) -> None:
        """The catalogue can be read there."""
        only = f"{self.url} target_session_attrs=standby"
        expect(self.catalogue.state(only) == "a", "a replica has another state")
        said = said_in_one_sentence(self.catalogue.populate("b", only))
        expect("asks for servers that only read (target_session_attrs=standby)" in said, said)

    def start_readers(self) -> None:
        """Objects connected to each server, and calls."""
        self.watchers = [Watcher(self.catalogue, url) for url in (self.reading, self.primary_first)]
        self.caller = Caller(self.catalogue, self.reading)
        connected = ("count(*) > 0 FROM pg_stat_activity WHERE application_name = 'device-database'"
                     " AND query LIKE '%FROM device_properties%'")
        for server in (self.primary, self.replica):
            wait_until(lambda server=server: server.holds(connected),  # type: ignore[misc]
                       "a reader of each server")

    def lose_the_primary_in_a_populate(self) -> None:
        """A lock stops the populate where it has stored a part."""
        blocker = subprocess.Popen(
            [*self.primary.words(), "-c", "BEGIN", "-c", "LOCK TABLE options IN SHARE MODE", "-c",
             "SELECT pg_sleep(60)"], stderr=subprocess.DEVNULL)
        wait_until(lambda: self.primary.holds("count(*) > 0 FROM pg_locks WHERE mode = 'ShareLock'"
                                              " AND relation = 'options'::regclass"), "a lock")
        process = self.catalogue.start_populate("b", self.url)
        wait_until(lambda: self.primary.holds(
            "count(*) > 0 FROM pg_stat_activity WHERE wait_event_type = 'Lock'"), "a wait")
        self.primary.lose()
        output, errors = process.communicate()
        blocker.wait()
        said = said_in_one_sentence(Run(process.returncode, output, errors))
        expect(said == "the connection to the server is lost", said)
        expect("hint: the database is unchanged" in errors, errors)

    def nothing_can_be_changed_before_the_promotion(self) -> None:
        """And everything be read."""
        expect(self.catalogue.state(self.url) == "a", "the old catalogue is lost")
        said = said_in_one_sentence(self.catalogue.populate("b", self.url))
        expect(said.startswith("no server accepts changes: connection to server on socket ")
               and "session is read-only" in said and "5432\" failed: " in said, said)

    def promotion_ends_it(self) -> None:
        """The same URL works again."""
        self.replica.ask("SELECT pg_promote()")
        expect(self.catalogue.state(self.url) == "a", "the promotion changes the catalogue")
        run = self.catalogue.populate("b", self.url)
        expect(run.code == 0 and run.errors == "", f"populate: {run}")
        expect(self.catalogue.state(self.url) == "b", "the populate stores nothing")

    def readers_saw_no_error(self) -> None:
        """Each host that is lost is replaced by the next."""
        for watcher in self.watchers:
            reads, failures, longest, reasons = watcher.end()
            expect(reads > 0 and failures == 0, f"a reader failed {failures} times: {reasons}")
            print(f"a reader: {reads} reads, {longest:.2f} s without an answer at most")
        calls, errors, longest = self.caller.end()
        expect(calls > 0 and not errors, f"calls failed: {errors}")
        print(f"mxtool devices: {calls} calls, {longest:.2f} s without an answer at most")

    def end(self) -> None:
        """Stops what still runs."""
        for server in (self.primary, self.replica):
            server.lose()


def main() -> None:
    """Runs the test in a folder that the server's user may write to."""
    if len(sys.argv) != 2:
        fail("expected the folder of the programs")
    with tempfile.TemporaryDirectory(prefix="test-fail-over-", dir="/tmp") as name:
        folder = pathlib.Path(name)
        give_to_server_user(folder)
        test = FailOver(pathlib.Path(sys.argv[1]), folder)
        try:
            test.writes_find_the_primary()
            test.refused_where_only_replicas_are_asked_for()
            test.start_readers()
            test.lose_the_primary_in_a_populate()
            test.nothing_can_be_changed_before_the_promotion()
            test.promotion_ends_it()
            test.readers_saw_no_error()
        finally:
            test.end()


main()
