"""A catalogue over TLS, as the connection string demands it."""
from __future__ import annotations

import os
import tempfile
import time
import unittest
from pathlib import Path

from authority import Authority
from catalogues import SERVER, done, make_modules, mxtool, psql, url

DATA = Path(SERVER["host"]) / "data"
ADDRESS = "127.0.0.1"
FAILED = f'connection to server at "{ADDRESS}", port {SERVER["port"]} failed: '


class Tls(unittest.TestCase):
    """The server has a certificate for db.example and accepts nothing else over the network."""

    folder: Path
    ours: Authority
    other: Authority
    rules: str

    @classmethod
    def setUpClass(cls) -> None:
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = Path(folder.name)
        cls.ours = Authority(cls.folder, "ours")
        cls.other = Authority(cls.folder, "other")
        cls.offer_certificate_of(cls.ours)
        cls.rules = (DATA / "pg_hba.conf").read_text()
        (DATA / "pg_hba.conf").write_text("local all all trust\nhostssl all all 127.0.0.1/32 trust\n")
        cls.change("ALTER SYSTEM SET ssl = on", "on")
        psql("postgres", "CREATE DATABASE tls")
        done("populate", make_modules(cls.folder / "modules", 2, "1"), "--db", url("tls"))

    @classmethod
    def tearDownClass(cls) -> None:
        (DATA / "pg_hba.conf").write_text(cls.rules)
        cls.change("ALTER SYSTEM RESET ssl", "off")
        psql("postgres", "DROP DATABASE tls WITH (FORCE)")

    @classmethod
    def offer_certificate_of(cls, authority: Authority) -> None:
        """Gives the server a certificate; its key must be the server's own."""
        authority.sign("db.example", DATA / "server.crt", DATA / "server.key")
        owner = DATA.stat()
        for name in ("server.crt", "server.key"):
            os.chown(DATA / name, owner.st_uid, owner.st_gid)

    @classmethod
    def change(cls, statement: str, ssl: str) -> None:
        """Changes the configuration of the server and waits until it uses it."""
        psql("postgres", f"{statement}; SELECT pg_reload_conf()")
        end = time.monotonic() + 10
        while psql("postgres", "SHOW ssl") != ssl:
            if time.monotonic() > end:
                raise RuntimeError("the server does not change its configuration")
            time.sleep(0.01)

    def words(self, authority: Authority, host: str = "db.example") -> str:
        return url("tls", host=host, hostaddr=ADDRESS, sslmode="verify-full",
                   sslrootcert=str(authority.certificate))

    def refused(self, database: str, reason: str, host: str = "db.example") -> None:
        """Expects one sentence that ends with `reason`."""
        run = mxtool("devices", "--db", database)
        self.assertEqual(run.returncode, 4)
        self.assertEqual(
            run.stderr,
            f"error: Cannot open device database postgresql:host={host} dbname=tls: {reason}\n")

    def test_right_certificate_is_accepted(self) -> None:
        database = self.words(self.ours)
        self.assertEqual(done("devices", "--db", database).count("kv38"), 2)
        self.assertIn("2 replaced", done("populate", self.folder / "modules", "--db", database))

    def test_certificate_of_another_host_is_refused(self) -> None:
        self.refused(self.words(self.ours, "db2.example"),
                     FAILED + 'server certificate for "db.example" does not match host name '
                     '"db2.example"', host="db2.example")

    def test_certificate_of_another_authority_is_refused(self) -> None:
        self.refused(self.words(self.other),
                     FAILED + "SSL error: certificate verify failed, expected a valid certificate "
                     f"of an authority in {self.other.certificate}")

    def test_missing_authority_is_named(self) -> None:
        missing = self.folder / "missing.crt"
        self.refused(self.words(self.ours).replace(str(self.ours.certificate), str(missing)),
                     FAILED + f'root certificate file "{missing}" does not exist')

    def test_server_accepts_nothing_in_clear(self) -> None:
        self.refused(url("tls", host="db.example", hostaddr=ADDRESS, sslmode="disable"),
                     f'no pg_hba.conf entry for host "{ADDRESS}", user "tester", database "tls", '
                     "no encryption")

    def test_server_without_tls_is_refused(self) -> None:
        self.change("ALTER SYSTEM SET ssl = off", "off")
        self.addCleanup(self.change, "ALTER SYSTEM SET ssl = on", "on")
        self.refused(self.words(self.ours),
                     FAILED + "server does not support SSL, but SSL was required")


if __name__ == "__main__":
    unittest.main()
