"""Catalogues on the test server and in files, and the commands of docs/database-servers.md."""
from __future__ import annotations

import os
import re
import subprocess
import sys
from pathlib import Path
from typing import Optional

ROOT = Path(__file__).resolve().parents[2]
PROGRAMS = Path(os.environ["PROGRAMS"])
EXAMPLES = PROGRAMS.parent / "examples/modules"
SERVER = dict(word.split("=") for word in os.environ["TEST_POSTGRESQL"].split())
DOCUMENT = ROOT / "docs/database-servers.md"

sys.path.insert(0, str(ROOT / "tests/soak"))

from generated_modules import contents, examples, generate  # noqa: E402


def documented(heading: str, language: str) -> list[str]:
    """Returns the blocks in `language` of the chapter `heading` of the document, in their order."""
    chapter = re.split(r"^#+ ", DOCUMENT.read_text(), flags=re.MULTILINE)
    text = next(part for part in chapter if part.startswith(heading + "\n"))
    return re.findall(rf"^```{language}\n(.*?)^```$", text, flags=re.MULTILINE | re.DOTALL)


def words(database: str, user: str = "tester", **more: str) -> str:
    """Returns the connection string of a database on the server; `more` words are added."""
    every = {**SERVER, "dbname": database, "user": user, **more}
    return " ".join(f"{key}={value}" for key, value in every.items())


def url(database: str, user: str = "tester", **more: str) -> str:
    """Returns the same as the URL of a device database."""
    return "postgresql:" + words(database, user, **more)


def psql(database: str, statements: str) -> str:
    """Runs `statements` as the superuser of the server; returns the rows. Raises if one fails."""
    run = subprocess.run(["psql", "-qAtX", "-v", "ON_ERROR_STOP=1", words(database)],
                         input=statements, capture_output=True, text=True, check=False)
    if run.returncode != 0:
        raise RuntimeError(run.stderr)
    return run.stdout.strip()


def mxtool(*arguments: object, environment: Optional[dict[str, str]] = None
           ) -> subprocess.CompletedProcess[str]:
    """Runs mxtool; whatever it ends with, the caller looks at it."""
    return subprocess.run([PROGRAMS / "mxtool", *map(str, arguments)], capture_output=True,
                          text=True, check=False, env={**os.environ, **(environment or {})})


def done(*arguments: object) -> str:
    """Runs mxtool and returns what it prints. Raises if it fails or complains."""
    run = mxtool(*arguments)
    if run.returncode != 0 or run.stderr:
        raise RuntimeError(f"{arguments}: {run.returncode} {run.stderr}")
    return run.stdout


def make_modules(folder: Path, count: int, state: str) -> Path:
    """Makes `count` mx files in `folder`, those of another state with other bytes; returns it."""
    generate(examples(PROGRAMS), folder, count, state)
    return folder


def exported(database: str, folder: Path) -> dict[str, bytes]:
    """Writes the mx files of the catalogue with the URL `database` to `folder`; returns them."""
    done("devices", "--db", database, "--export", folder)
    return contents(folder)


def files(folder: Path) -> dict[str, bytes]:
    """Returns the mx files in `folder` by their names."""
    return contents(folder)
