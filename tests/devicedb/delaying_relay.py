#!/usr/bin/env python3
"""Runs a command with a distant PostgreSQL server, by a relay before that of with-postgresql.

Usage: with-postgresql delaying_relay.py [--delay MILLISECONDS] COMMAND [ARGUMENT]...

COMMAND has the relay in TEST_POSTGRESQL. --delay: added to each round trip, half in each direction;
0 by default. Prints the round trips of COMMAND on standard error: how often the direction changed
from the server's bytes to the client's. The exit code is that of COMMAND.
"""
from __future__ import annotations

import os
import pathlib
import re
import select
import socket
import subprocess
import sys
import tempfile
import threading
import time

SOCKET = ".s.PGSQL.5432"


class Relay:
    """Passes all bytes on to the server of the connection string `words`, until it is closed.

    `delay` is in seconds per round trip. Raises `ValueError` for `words` without "host=FOLDER".
    """

    def __init__(self, words: str, delay: float = 0) -> None:
        folder = re.search(r"host=(\S+)", words)
        if folder is None:
            raise ValueError(f"no folder in {words!r}, expected host=FOLDER")
        self.delay = delay
        self.round_trips = 0
        self._server = str(pathlib.Path(folder[1], SOCKET))
        self._folder = tempfile.TemporaryDirectory()
        self._lock = threading.Lock()
        self._listener = socket.socket(socket.AF_UNIX)
        self._listener.bind(str(pathlib.Path(self._folder.name, SOCKET)))
        self._listener.listen()
        self.words = words.replace(folder[1], self._folder.name)
        threading.Thread(target=self._accept, daemon=True).start()

    def close(self) -> None:
        """Accepts no more connections; those that are open go on."""
        self._listener.close()
        self._folder.cleanup()

    def _accept(self) -> None:
        while True:
            try:
                client, _ = self._listener.accept()
            except OSError:
                return
            threading.Thread(target=self._pass_on, args=(client,), daemon=True).start()

    def _pass_on(self, client: socket.socket) -> None:
        with client, socket.socket(socket.AF_UNIX) as server:
            server.connect(self._server)
            last = server
            while True:
                ready, _, _ = select.select([client, server], [], [])
                source = last if last in ready else ready[0]
                if source is not last:
                    self._turn(to_server=source is client)
                    last = source
                data = source.recv(1 << 20)
                if not data:
                    return
                (server if source is client else client).sendall(data)

    def _turn(self, to_server: bool) -> None:
        time.sleep(self.delay / 2)
        if to_server:
            with self._lock:
                self.round_trips += 1


def main() -> int:
    """Runs the command of the command line; returns its exit code, or 2 without one."""
    words = sys.argv[1:]
    delay = 0.0
    if words[:1] == ["--delay"]:
        delay = float(words[1]) / 1000
        words = words[2:]
    if not words:
        print(__doc__, file=sys.stderr)
        return 2
    relay = Relay(os.environ["TEST_POSTGRESQL"], delay)
    run = subprocess.run(words, env={**os.environ, "TEST_POSTGRESQL": relay.words}, check=False)
    relay.close()
    print(f"{relay.round_trips} round trips", file=sys.stderr)
    return run.returncode


if __name__ == "__main__":
    sys.exit(main())
