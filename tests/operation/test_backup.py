"""Backups made while a catalogue is populated, with the commands of the document, and restored."""
from __future__ import annotations

import os
import subprocess
import tempfile
import unittest
from pathlib import Path

from catalogues import PROGRAMS, documented, done, exported, files, make_modules, psql, url, words

MODULES = 60
SERVER_OF_DOCUMENT = "host=db.example dbname=plant"


def rows_with_channels(database: str) -> int:
    """Returns how many modules of the catalogue have channels."""
    return done("devices", "--db", database, "--where", "channels>0").count("kv38")


class Backups(unittest.TestCase):
    """Two states of a catalogue; a backup of either one must be that one as a whole."""

    folder: Path
    old: Path
    new: Path
    with_channels: int

    @classmethod
    def setUpClass(cls) -> None:
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = Path(folder.name)
        cls.old = make_modules(cls.folder / "old", MODULES, "1")
        cls.new = make_modules(cls.folder / "new", MODULES, "2")
        fresh = f"sqlite:{cls.folder}/fresh.sqlite"
        done("populate", cls.old, "--db", fresh)
        cls.with_channels = rows_with_channels(fresh)

    def run_documented(self, command: str, database: str) -> None:
        """Runs a command of the document in the folder, with the test's own server."""
        shell = command.replace(SERVER_OF_DOCUMENT, words(database))
        run = subprocess.run(["sh", "-ec", shell], cwd=self.folder, capture_output=True, text=True,
                             check=False)
        self.assertEqual((run.returncode, run.stderr), (0, ""), command)

    def saved_during_a_populate(self, database: str, command: str, name: str) -> list[Path]:
        """Runs `command` again and again until a populate has ended; returns what it wrote."""
        copies: list[Path] = []
        with subprocess.Popen([PROGRAMS / "mxtool", "-q", "populate", self.new, "--db",
                               database]) as populate:
            while populate.poll() is None or not copies:
                self.run_documented(command, "backup")
                copies.append(self.folder / f"{len(copies)}-{name}")
                os.rename(self.folder / name, copies[-1])
        self.assertEqual(populate.returncode, 0)
        return copies

    def expect_one_state(self, database: str, *states: Path) -> None:
        """Expects all files and rows of one of the states, and that it can be populated."""
        with tempfile.TemporaryDirectory() as folder:
            saved = exported(database, Path(folder) / "exported")
        self.assertIn(saved, [files(state) for state in states])
        self.assertEqual(rows_with_channels(database), self.with_channels, "rows are missing")
        self.assertIn(f"{MODULES} replaced", done("populate", self.old, "--db", database))

    def test_file_is_saved_while_it_is_populated(self) -> None:
        save, restore = documented("Backup and restore", "sh")[:2]
        database = f"sqlite:{self.folder}/devices.sqlite"
        done("populate", self.old, "--db", database)
        copies = self.saved_during_a_populate(database, save, "copy.sqlite")
        self.expect_one_state(f"sqlite:{copies[0]}", self.old)
        os.rename(copies[-1], self.folder / "copy.sqlite")
        self.run_documented(restore, "")
        self.expect_one_state(database, self.old, self.new)

    def test_server_is_saved_while_it_is_populated(self) -> None:
        save, restore = documented("Backup and restore", "sh")[2:]
        psql("postgres", "CREATE DATABASE backup; CREATE DATABASE restored")
        self.addCleanup(psql, "postgres", "DROP DATABASE backup; DROP DATABASE restored")
        for database in ("backup", "restored"):
            psql("postgres", f"ALTER DATABASE {database} SET search_path = catalogue")
        psql("backup", "CREATE SCHEMA catalogue")
        done("populate", self.old, "--db", url("backup"))
        copies = self.saved_during_a_populate(url("backup"), save, "plant.dump")
        for copy, states in ((copies[0], [self.old]), (copies[-1], [self.old, self.new])):
            os.rename(copy, self.folder / "plant.dump")
            self.run_documented(restore, "restored")
            self.expect_one_state(url("restored"), *states)
            os.rename(self.folder / "plant.dump", copy)


if __name__ == "__main__":
    unittest.main()
