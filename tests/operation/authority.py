"""A certificate authority, made for one test."""
from __future__ import annotations

import subprocess
from pathlib import Path

KEY = ["-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes"]


def openssl(*arguments: object) -> None:
    """Runs openssl. Raises with its messages if it fails."""
    run = subprocess.run(["openssl", *map(str, arguments)], capture_output=True, text=True,
                         check=False)
    if run.returncode != 0:
        raise RuntimeError(run.stderr)


class Authority:
    """Signs certificates of servers; `certificate` is the file that clients need."""

    def __init__(self, folder: Path, name: str) -> None:
        self.certificate = folder / f"{name}.crt"
        self.key = folder / f"{name}.key"
        openssl("req", "-x509", *KEY, "-days", "2", "-subj", f"/CN={name}",
                "-keyout", self.key, "-out", self.certificate)

    def sign(self, host: str, certificate: Path, key: Path, days: int = 2) -> None:
        """Makes the certificate of a server named `host`, valid for `days`, and its key."""
        openssl("req", "-x509", "-CA", self.certificate, "-CAkey", self.key, *KEY,
                "-days", days, "-subj", f"/CN={host}", "-addext", f"subjectAltName=DNS:{host}",
                "-addext", "basicConstraints=critical,CA:FALSE", "-keyout", key,
                "-out", certificate)
