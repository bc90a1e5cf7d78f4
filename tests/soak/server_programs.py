"""The programs of PostgreSQL, and running them as a user that they accept."""
from __future__ import annotations

import os
import pathlib
import pwd
import sys
import time
from typing import Callable, List

PROGRAMS = max(pathlib.Path("/usr/lib/postgresql").glob("*/bin"),
               key=lambda path: float(path.parent.name))


def as_server_user() -> List[str]:
    """Returns how to start a program that refuses to run as the superuser."""
    if os.geteuid() != 0:
        return []
    user = pwd.getpwnam("postgres")
    return ["setpriv", f"--reuid={user.pw_uid}", f"--regid={user.pw_gid}", "--clear-groups"]


def give_to_server_user(folder: pathlib.Path) -> None:
    """Lets the servers write to `folder`, and clients find their sockets there."""
    if os.geteuid() == 0:
        os.chown(folder, pwd.getpwnam("postgres").pw_uid, -1)
    folder.chmod(0o755)


def wait_until(holds: Callable[[], bool], what: str, seconds: float = 20) -> None:
    """Waits, at most `seconds`, else ends the test."""
    end = time.monotonic() + seconds
    while not holds():
        if time.monotonic() >= end:
            sys.exit(f"{pathlib.Path(sys.argv[0]).name}: {what}: not within {seconds} seconds")
        time.sleep(0.02)
