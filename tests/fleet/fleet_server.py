"""A PostgreSQL server of its own in a temporary folder, on a Unix socket, and what is asked of it."""

import csv
import io
import os
import shutil
import signal
import subprocess
import tempfile
import time
from pathlib import Path

FLEET = Path(__file__).resolve().parents[2] / "packaging/fleet"


def programs():
    """Where Debian keeps the newest server's programs."""
    found = sorted(Path("/usr/lib/postgresql").glob("*/bin/initdb"), key=lambda path: int(path.parts[-3]))
    if not found:
        raise FileNotFoundError("PostgreSQL is not installed: packaging/install-packages test")
    return found[-1].parent


class Server:
    """Runs until it is removed, or until this process ends, however it ends. As root it runs as the user
    postgres, since it refuses root."""

    def __init__(self, xlg, fsync="off"):
        self.programs = programs()
        self.folder = Path(tempfile.mkdtemp(prefix="fleet"))
        self.user = []
        if os.geteuid() == 0:
            shutil.chown(self.folder, "postgres", "postgres")
            self.user = ["--reuid=postgres", "--regid=postgres", "--clear-groups"]
        self.environment = os.environ | {"PGHOST": str(self.folder), "PGUSER": "fleet", "PGDATABASE": "fleet",
                                         "PGPORT": "5432", "XLG": str(xlg), "LC_ALL": "C.UTF-8"}
        self.process = None
        try:
            self.start(fsync)
        except BaseException:
            self.remove()
            raise

    def start(self, fsync):
        data = self.folder / "data"
        made = self.as_server("initdb", "--username=fleet", "--auth=trust", "--encoding=UTF8", "--no-sync",
                              f"--pgdata={data}")
        if made.wait() != 0:
            raise RuntimeError(f"initdb failed: {(self.folder / 'output').read_text()}")
        self.process = self.as_server("postgres", "-D", data, "-k", self.folder, "-c", "listen_addresses=",
                                      "-c", f"fsync={fsync}")
        begin = time.monotonic()
        while self.run([self.programs / "pg_isready", "--quiet"], check=False).returncode != 0:
            if self.process.poll() is not None or time.monotonic() > begin + 30:
                raise RuntimeError(f"no server: {(self.folder / 'output').read_text()}")
            time.sleep(0.05)
        self.run(["createdb", "fleet"])
        self.run(["psql", "-q", "--set=ON_ERROR_STOP=1", f"--file={FLEET / 'schema.sql'}"])

    def as_server(self, program, *words):
        """A process that ends with this one."""
        with (self.folder / "output").open("w", encoding="utf-8") as output:
            return subprocess.Popen(
                ["setpriv", "--pdeathsig", "INT", *self.user, self.programs / program, *words],
                stdin=subprocess.DEVNULL, stdout=output, stderr=output, cwd="/", env=self.environment)

    def remove(self):
        if self.process is not None:
            self.process.send_signal(signal.SIGINT)  # without waiting for clients
            self.process.wait(60)
        shutil.rmtree(self.folder)

    def run(self, words, check=True, timeout=100):
        return subprocess.run(words, capture_output=True, check=check, env=self.environment, timeout=timeout)

    def load(self, *paths, plant="Plant"):
        """Exit code, what it said, what it complained of."""
        done = self.run([FLEET / "load", "--plant", plant, *paths], check=False)
        return done.returncode, done.stdout.decode(errors="replace"), done.stderr.decode(errors="replace")

    def ask(self, sql, timeout=100):
        """The rows, as texts."""
        told = self.run(["psql", "-X", "--csv", "-t", "--set=ON_ERROR_STOP=1", "-c", sql],
                        timeout=timeout).stdout
        return [tuple(row) for row in csv.reader(io.StringIO(told.decode()))]

    def query(self, name, timeout=100, **parameters):
        """The rows of a query of the folder, each by its columns."""
        settings = [f"--set={key}={value}" for key, value in parameters.items()]
        told = self.run(["psql", "-X", "--csv", "--set=ON_ERROR_STOP=1", *settings,
                         f"--file={FLEET / 'queries' / name}.sql"], timeout=timeout).stdout
        return list(csv.DictReader(io.StringIO(told.decode())))
