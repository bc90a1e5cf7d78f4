#!/usr/bin/env python3
"""Tests device databases under load and faults, on both engines, and prints figures.

Usage: with-postgresql soak.py BIN [--short]

BIN holds mxtool and catalogue-worker; the examples are built beside it. --short: the same in seconds, for
the test suite. Ends with 1 at the first failure.
"""
import os
import pathlib
import random
import re
import resource
import signal
import sqlite3
import subprocess
import sys
import tempfile
import time

import generated_modules
from generated_modules import contents

BIN = pathlib.Path(sys.argv[1])
EXAMPLES = generated_modules.examples(BIN)
SHORT = "--short" in sys.argv
SERVER = os.environ["TEST_POSTGRESQL"]


def fail(text):
    sys.exit(f"soak: {text}")


def expect(holds, text):
    if not holds:
        fail(text)


def generate(folder, count, state, first=0x10000000):
    generated_modules.generate(EXAMPLES, folder, count, state, first)


def tool(*words, **more):
    environment = {**os.environ, "ASAN_OPTIONS": "detect_leaks=0", **more.pop("environment", {})}
    return subprocess.run([*more.pop("through", []), BIN / "mxtool", *words], capture_output=True, text=True, check=False,
                          env=environment, **more)


def done(*words, **more):
    run = tool(*words, **more)
    expect(run.returncode == 0 and run.stderr == "", f"{words}: {run.returncode} {run.stderr}")
    return run.stdout


def psql(statement):
    return subprocess.run(["psql", SERVER, "-qAtc", statement], capture_output=True, text=True,
                          check=True).stdout.strip()


class Sqlite:
    name = "SQLite"

    def __init__(self, folder):
        self.path = folder / "devices.sqlite"
        self.url = f"sqlite:{self.path}"

    def rows(self, question):
        connection = sqlite3.connect(self.path)
        try:
            return connection.execute(question).fetchall()
        finally:
            connection.close()

    def check(self):
        expect(self.rows("PRAGMA integrity_check") == [("ok",)], "the file is damaged")
        expect(self.rows("PRAGMA foreign_key_check") == [], "rows without their module")

    def count(self, table):
        return self.rows(f"SELECT count(*) FROM {table}")[0][0]


class Postgresql:
    name = "PostgreSQL"
    schemas = 0

    def __init__(self, _folder):
        Postgresql.schemas += 1
        self.schema = f"soak_{Postgresql.schemas}"
        psql(f"CREATE SCHEMA {self.schema}")
        self.url = f"postgresql:{SERVER} options=-csearch_path={self.schema}"

    def check(self):
        orphans = psql(f"SET search_path = {self.schema}; SELECT count(*) FROM channels c WHERE NOT"
                       " EXISTS (SELECT 1 FROM modules m WHERE m.module = c.module)")
        expect(orphans == "0", "rows without their module")

    def count(self, table):
        return int(psql(f"SELECT count(*) FROM {self.schema}.{table}"))


def state_of(engine, states, folder):
    """Returns the state in which the catalogue is, by all of its files."""
    engine.check()
    target = folder / "exported"
    done("devices", "--db", engine.url, "--export", str(target))
    exported = contents(target)
    for path in target.iterdir():
        path.unlink()
    for state, files in states.items():
        if exported == files:
            return state
    fail(f"the catalogue holds {len(exported)} modules that are no state that was stored")
    return None


def killed(make, folder):
    """A populate is killed at a random moment: the catalogue is the complete old or new one."""
    times, modules = (6, 40) if SHORT else (200, 300)
    engine = make(folder)
    for state in "ab":
        generate(folder / state, modules, "12"["ab".index(state)])
    states = {state: contents(folder / state) for state in "ab"}
    done("populate", str(folder / "b"), "--db", engine.url)
    begin = time.monotonic()
    done("populate", str(folder / "a"), "--db", engine.url)
    usual = time.monotonic() - begin
    tables = ["modules", "channels", "parameters", "options"]
    rows = [engine.count(table) for table in tables]
    current, old, new, finished = "a", 0, 0, 0
    for _ in range(times):
        following = "b" if current == "a" else "a"
        with subprocess.Popen([BIN / "mxtool", "-q", "populate", str(folder / following), "--db",
                               engine.url], stderr=subprocess.DEVNULL) as process:
            time.sleep(random.uniform(0, 1.4 * usual))
            process.send_signal(signal.SIGKILL)
            finished += process.wait() == 0
        found = state_of(engine, states, folder)
        expect([engine.count(table) for table in tables] == rows, "the catalogue lacks rows")
        old, new = old + (found == current), new + (found == following)
        current = found
    print(f"{engine.name}: populate of {modules} modules killed {times} times ({usual:.2f} s, "
          f"{finished} had just ended): {old} times the old catalogue, {new} times the new one")


def crowd(make, folder):
    """Eight writers and eight readers use one catalogue."""
    each, seconds = (3, 3) if SHORT else (8, 60)
    engine = make(folder)
    root = folder / "writers"
    for writer in range(each):
        for state in "ab":
            generate(root / str(writer) / state, len(EXAMPLES), "12"["ab".index(state)],
                     0x20000000 + 0x1000 * writer)
    done("populate", str(root / "0/a"), "--db", engine.url)
    calls = [["write", engine.url, str(root / str(writer)), str(seconds)] for writer in range(each)]
    calls += [["read", engine.url, str(root), str(seconds)]] * each
    workers = [subprocess.Popen([BIN / "catalogue-worker", *call], stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE, text=True) for call in calls]
    counts = {"write": 0, "read": 0}
    for call, worker in zip(calls, workers):
        out, err = worker.communicate()
        expect(worker.returncode == 0 and err == "", f"{engine.name}: {call[0]}: {err}")
        counts[call[0]] += int(out)
    subprocess.run([BIN / "catalogue-worker", "check", engine.url, str(root)], check=True)
    engine.check()
    print(f"{engine.name}: {each} writers and {each} readers, {seconds} s: "
          f"{counts['write']} transactions of {len(EXAMPLES)} modules "
          f"({counts['write'] / seconds:.0f}/s), {counts['read'] / seconds:.0f} reads/s, no error, "
          "nothing lost or torn")


def refused(engine, states, folder, what, reason, *words, **more):
    run = tool(*words, **more)
    expect(run.returncode == 4, f"{what}: {run.returncode} {run.stderr}")
    lines = run.stderr.splitlines()
    expect(lines[0].startswith("error: ") and reason in lines[0], f"{what}: {run.stderr}")
    expect(lines[1:] in ([], ["hint: the database is unchanged"]), f"{what}: {run.stderr}")
    expect(state_of(engine, states, folder) == "a", f"{what}: the catalogue has changed")
    print(f"{engine.name}: {what}: {lines[0].replace(engine.url, 'URL')}")


def prepared(make, folder):
    modules = 60 if SHORT else 1000
    engine = make(folder)
    generate(folder / "a", len(EXAMPLES), "1")
    generate(folder / "b", modules, "2")
    done("populate", str(folder / "a"), "--db", engine.url)
    return engine, {"a": contents(folder / "a")}, ["populate", str(folder / "b"), "--db", engine.url]


def accidents_of_a_file(folder):
    engine, states, populate = prepared(Sqlite, folder)

    def full_disk():
        signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
        resource.setrlimit(resource.RLIMIT_FSIZE, (150_000, 150_000))

    refused(engine, states, folder, "full disk", "", *populate, preexec_fn=full_disk)
    other = sqlite3.connect(engine.path)
    other.execute("BEGIN IMMEDIATE")
    refused(engine, states, folder, "locked", "database is locked", *populate,
            environment={"DEVICE_DATABASE_WAIT": "1"})
    other.close()
    os.chmod(engine.path, 0o444)
    # Without this capability permissions also apply to root. Another user might have no access to the program.
    as_others = ["setpriv", "--bounding-set=-dac_override"] if os.geteuid() == 0 else []
    refused(engine, states, folder, "read-only", "readonly database", *populate, through=as_others)
    os.chmod(engine.path, 0o644)


def accidents_of_a_server(folder):
    engine, states, populate = prepared(Postgresql, folder)
    with subprocess.Popen(["psql", SERVER, "-qAtc", "BEGIN", "-c", f"SELECT version FROM "
                           f"{engine.schema}.schema_version FOR UPDATE", "-c", "SELECT 'locked'",
                           "-c", "SELECT pg_sleep(60)"], stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL, text=True) as other:
        while "locked" not in other.stdout.readline():
            pass
        refused(engine, states, folder, "locked", "lock timeout", *populate,
                environment={"DEVICE_DATABASE_WAIT": "1"})
        psql("SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE query LIKE '%pg_sleep(60)%'"
             " AND pid <> pg_backend_pid()")
    psql("CREATE ROLE reader LOGIN")
    psql(f"GRANT USAGE ON SCHEMA {engine.schema} TO reader")
    psql(f"GRANT SELECT ON ALL TABLES IN SCHEMA {engine.schema} TO reader")
    refused(engine, states, folder, "read-only", "permission denied", *populate[:3],
            engine.url.replace("user=tester", "user=reader"))
    lost_server(engine, states, folder, populate)
    full_server(engine, states, folder, populate)


def wait_for_server():
    for _ in range(200):
        if subprocess.run(["pg_isready", "-q", "-d", SERVER], check=False).returncode == 0:
            return
        time.sleep(0.05)
    fail("the server does not come back")


def lost_server(engine, states, folder, populate):
    with subprocess.Popen([BIN / "mxtool", *populate], stderr=subprocess.PIPE, text=True,
                          env={**os.environ, "ASAN_OPTIONS": "detect_leaks=0"}) as process:
        # A transaction that writes has an identifier; the one that opens the database only reads.
        while psql("SELECT count(*) FROM pg_stat_activity WHERE application_name = 'device-database'"
                   " AND backend_xid IS NOT NULL") == "0":
            pass
        subprocess.run(["sh", "-c", os.environ["TEST_POSTGRESQL_CRASH"]], check=True)
        lines = process.stderr.read().splitlines()
    expect(process.returncode == 4, f"server stopped: {process.returncode} {lines}")
    expect(len(lines) == 2 and lines[0].endswith("the connection to the server is lost"), lines)
    wait_for_server()
    expect(state_of(engine, states, folder) == "a", "server stopped: the catalogue has changed")
    print(f"{engine.name}: server stopped in the middle: {lines[0].split(' dbname')[-1]}")


def full_server(engine, states, folder, populate):
    """Moves the tables to a small file system, if one can be made on this machine."""
    small = pathlib.Path(tempfile.mkdtemp(prefix="soak-small-", dir="/tmp"))
    mount = ["mount", "-t", "tmpfs", "-o", "size=2m,mode=777", "tmpfs", str(small)]
    if os.geteuid() != 0 or subprocess.run(mount, check=False, stderr=subprocess.DEVNULL).returncode:
        print(f"{engine.name}: full disk: not run, no small file system can be made here")
        small.rmdir()
        return
    try:
        place = small / "tables"
        place.mkdir()
        os.chown(place, folder_owner(), -1)
        psql(f"CREATE TABLESPACE small LOCATION '{place}'")
        tables = ("options", "parameters", "channels", "modules", "device_properties")
        for table in tables:
            psql(f"ALTER TABLE {engine.schema}.{table} SET TABLESPACE small")
        filler = small / "filler"
        filler.write_bytes(bytes(os.statvfs(small).f_bavail * 4096))
        refused(engine, states, folder, "full disk", "No space left", *populate)
        filler.unlink()
        for table in tables:
            psql(f"ALTER TABLE {engine.schema}.{table} SET TABLESPACE pg_default")
        psql("DROP TABLESPACE small")
    finally:
        # The server may still have a file open there after a failure.
        subprocess.run(["umount", "--lazy", str(small)], check=False)
        small.rmdir()


def folder_owner():
    return os.stat(SERVER.split()[0].removeprefix("host=")).st_uid


def seconds_of(*words):
    begin = time.monotonic()
    done(*words)
    return time.monotonic() - begin


def sizes(make, folder):
    modules = 100 if SHORT else 10_000
    engine = make(folder)
    generate(folder / "many", modules, "1")
    any_id = f"{0x10000000 + modules // 2:08x}"
    took = seconds_of("populate", str(folder / "many"), "--db", engine.url)
    again = seconds_of("populate", str(folder / "many"), "--db", engine.url)
    print(f"{engine.name}: {modules} modules: populate {took:.2f} s ({took / modules * 1e6:.0f} us per "
          f"module), again over the old ones {again:.2f} s")
    for what, words in (("list", []), ("find", [any_id]), ("search", ["--search", "ai ±10"]),
                        ("filter", ["--where", "in_bytes>22", "--where", "unit~V"]),
                        ("list as JSON", ["--format", "json"]),
                        ("export", ["--export", str(folder / "out")])):
        print(f"{engine.name}:   {what}: "
              f"{seconds_of('devices', '--db', engine.url, *words) * 1e3:.0f} ms")
    expect(contents(folder / "out") == {f"MX{n[2:]}": b for n, b in contents(folder / "many").items()},
           "what is exported differs from the files")


def main():
    works = [(killed, (Sqlite, Postgresql)), (crowd, (Sqlite, Postgresql)),
             (sizes, (Sqlite, Postgresql))]
    for work, engines in works:
        for engine in engines:
            with tempfile.TemporaryDirectory(prefix="soak-") as folder:
                work(engine, pathlib.Path(folder))
                sys.stdout.flush()
    for work in (accidents_of_a_file, accidents_of_a_server):
        with tempfile.TemporaryDirectory(prefix="soak-") as folder:
            work(pathlib.Path(folder))
            sys.stdout.flush()


main()
