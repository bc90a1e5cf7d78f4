"""The rights that a reader and a writer need: those of the document, and none of them less."""
from __future__ import annotations

import shutil
import tempfile
import unittest
from pathlib import Path

from catalogues import EXAMPLES, documented, done, mxtool, psql, url

POOLER = {"port": "6432"}
NAMES = ("MX0001.bin", "MX0108.bin", "MX0304.bin")


class Rights(unittest.TestCase):
    folder: Path

    @classmethod
    def setUpClass(cls) -> None:
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = Path(folder.name)
        for name in NAMES:
            shutil.copy(EXAMPLES / name, cls.folder)
        psql("postgres", "CREATE DATABASE plant")
        for block in documented("Rights", "sql"):
            psql("plant", block)
        done("populate", cls.folder, "--db", url("plant", "catalogue_owner"))

    @classmethod
    def tearDownClass(cls) -> None:
        psql("postgres", "DROP DATABASE plant WITH (FORCE);"
                         "DROP ROLE catalogue_owner, catalogue_writer, catalogue_reader")

    def refused(self, reason: str, *arguments: object) -> None:
        """Expects the call to end with exit code 4 and one sentence that gives the reason."""
        run = mxtool(*arguments)
        self.assertEqual(run.returncode, 4, run.stderr)
        lines = run.stderr.splitlines()
        self.assertTrue(lines[0].startswith("error: Cannot "), lines)
        self.assertTrue(lines[0].endswith(reason), lines)
        self.assertIn(lines[1:], ([], ["hint: the database is unchanged"]))

    def without(self, right: str, role: str) -> None:
        """Takes the right on all tables from the role until the test ends."""
        tables = "ON ALL TABLES IN SCHEMA catalogue"
        psql("plant", f"REVOKE {right} {tables} FROM {role}")
        self.addCleanup(psql, "plant", f"GRANT {right} {tables} TO {role}")

    def test_tables_are_the_owners_in_its_schema(self) -> None:
        owners = psql("plant", "SELECT DISTINCT schemaname, tableowner FROM pg_tables"
                               " WHERE schemaname NOT IN ('pg_catalog', 'information_schema')")
        self.assertEqual(owners, "catalogue|catalogue_owner")

    def test_reader_uses_devices_in_all_its_forms(self) -> None:
        reader = url("plant", "catalogue_reader")
        for database in (reader, url("plant", "catalogue_reader", **POOLER)):
            self.assertEqual(done("devices", "--db", database).count("kv38"), 3)
        self.assertIn("5a030304", done("devices", "--db", reader, "--search", "0-20 ma"))
        self.assertIn("5a030304", done("devices", "--db", reader, "--where", "in_bytes>7"))
        self.assertIn("1816 bytes", done("devices", "5a030304", "--db", reader))
        self.assertIn('"5a030304"', done("devices", "--db", reader, "--format", "json"))
        with tempfile.TemporaryDirectory() as folder:
            done("devices", "--db", reader, "--export", folder + "/files")
            self.assertEqual((Path(folder) / "files/MX5a030304.bin").read_bytes(),
                             (EXAMPLES / "MX0304.bin").read_bytes())
            done("devices", "--db", reader, "--copy-to", f"sqlite:{folder}/copy.sqlite")

    def test_reader_changes_nothing(self) -> None:
        reader = url("plant", "catalogue_reader")
        reason = ": permission denied for table schema_version"
        self.refused(reason, "populate", self.folder, "--db", reader)
        self.refused(reason, "devices", "--db", reader, "--remove", "5a030304")

    def test_writer_populates_and_removes(self) -> None:
        for writer in (url("plant", "catalogue_writer"),
                       url("plant", "catalogue_writer", **POOLER)):
            done("devices", "--db", writer, "--remove", "5a030304")
            self.assertIn("1 module inserted, 2 replaced",
                          done("populate", self.folder, "--db", writer))
            self.assertIn("3 replaced", done("populate", self.folder, "--db", writer, "--replace"))

    def test_writer_needs_each_of_its_rights(self) -> None:
        owner, writer = url("plant", "catalogue_owner"), url("plant", "catalogue_writer")
        for right in ("INSERT", "UPDATE", "DELETE"):
            with self.subTest(right):
                before = done("devices", "--db", owner, "--format", "json")
                psql("plant", f"REVOKE {right} ON ALL TABLES IN SCHEMA catalogue"
                              " FROM catalogue_writer")
                run = mxtool("populate", self.folder, "--db", writer)
                psql("plant", f"GRANT {right} ON ALL TABLES IN SCHEMA catalogue"
                              " TO catalogue_writer")
                self.assertIn(run.returncode, (1, 4), run.stderr)
                self.assertIn(": permission denied for table ", run.stderr.splitlines()[0])
                self.assertEqual(done("devices", "--db", owner, "--format", "json"), before)

    def test_who_may_not_read_is_told_the_table(self) -> None:
        self.without("SELECT", "catalogue_reader")
        self.refused(": permission denied for table schema_version",
                     "devices", "--db", url("plant", "catalogue_reader"))

    def test_who_may_not_use_the_schema_is_told_so(self) -> None:
        psql("plant", "REVOKE USAGE ON SCHEMA catalogue FROM catalogue_reader")
        self.addCleanup(psql, "plant", "GRANT USAGE ON SCHEMA catalogue TO catalogue_reader")
        self.refused(": its search_path names no schema that exists and that the role may use",
                     "devices", "--db", url("plant", "catalogue_reader"))

    def test_writer_makes_no_tables(self) -> None:
        psql("plant", "CREATE SCHEMA empty; GRANT USAGE ON SCHEMA empty TO catalogue_writer")
        self.addCleanup(psql, "plant", "DROP SCHEMA empty")
        self.refused(": permission denied for schema empty", "populate", self.folder, "--db",
                     url("plant", "catalogue_writer", options="-csearch_path=empty"))


if __name__ == "__main__":
    unittest.main()
