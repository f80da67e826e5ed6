# SPDX-License-Identifier: MIT
"""A private host for one test.

A host is a directory tree under /tmp that becomes the root of the program's own mount
namespace. The program sees what the test put there, the system's /usr and its own build
directory, and nothing else; the machine itself is never touched. The mounts exist only in the
program's namespace, so that from outside the tree is made of plain files: a test writes and
reads them while the program runs, and removing the tree cannot reach anything behind a mount.

The tests are run by CTest, which sets
    CRADLE_BINARY     the executable under test
    CRADLE_BUILD_DIR  its build directory, visible in the host at the same path
    CRADLE_STUB_DIR   the directory of the stub libraries
and perhaps by tools/valgrind, which sets
    CRADLE_VALGRIND   a directory below the build directory for valgrind's reports
"""

import os
import shutil
import signal
import socket
import subprocess
import tempfile
import time
from pathlib import Path
from typing import Any, Mapping, NamedTuple, Sequence

COMMENT = "# This is an automatically generated file, do not edit\n"

# The settings of an instrumented build, handed on to the program as they are.
INSTRUMENTATION = ("ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS", "LLVM_PROFILE_FILE")

# Any error, and any memory that is lost, changes the status of the run. Debian's "valgrind" is a
# script around this, in which variables with a colon in their names get lost.
MEMCHECK = ("/usr/bin/valgrind.bin", "--vgdb=no", "--error-exitcode=99", "--num-callers=30")
MEMCHECK += ("--leak-check=full", "--show-leak-kinds=definite", "--errors-for-leak-kinds=definite")
SLOWDOWN = 20 if "CRADLE_VALGRIND" in os.environ else 1  # of what a test has patience for


def setting(name: str) -> str:
    """An environment variable that CTest sets."""
    value = os.environ.get(name)
    if not value:
        raise RuntimeError(f"{name} is not set; these tests are run by ctest")
    return value


def encode(text: str | bytes) -> bytes:
    """Text as the host holds it; bytes that are no UTF-8 stand as surrogate escapes."""
    return text if isinstance(text, bytes) else text.encode("utf-8", "surrogateescape")


def field(path: str) -> str:
    """A path as a field of a mount table."""
    return path.replace("\\", "\\134").replace(" ", "\\040")


def decode(data: bytes) -> str:
    return data.decode("utf-8", "surrogateescape")


def generated(groups: str = "", contributed: str = "", **facts: str) -> str:
    """The whole text of a generated configuration.

    The groups and the lines that hooks and fragments contributed are given as they stand in
    the file; the facts are those of alice's run but for the given ones.
    """
    alice = {"UserId": "1000", "User": "alice", "Home": "/home/alice"}
    lines = alice | {"Instance": "default", "BaseUid": "0"} | facts
    tail = "".join(f"{key}={value}\n" for key, value in lines.items())
    return COMMENT + groups + "\n[GeneratedConfig]\n" + contributed + tail


class Result(NamedTuple):
    """How a run ended: equal to the tuple (status, standard output, standard error)."""

    status: int
    stdout: str = ""
    stderr: str = ""


class Journal:
    """The receiving end of the systemd journal's socket, which may hold ten messages unread."""

    def __init__(self, path: Path) -> None:
        self.socket = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM)
        self.socket.bind(str(path))
        self.socket.setblocking(False)

    def messages(self) -> list[tuple[int, str]]:
        """The (priority, text) of everything received so far, oldest first."""
        messages = []
        while True:
            try:
                fields = self._fields(self.socket.recv(1 << 20))
            except BlockingIOError:
                return messages
            messages.append((int(fields["PRIORITY"]), fields["MESSAGE"]))

    @staticmethod
    def _fields(datagram: bytes) -> dict[str, str]:
        """The fields of one entry: NAME=text lines, or NAME, length and text with line feeds."""
        fields = {}
        while datagram:
            head, datagram = datagram.split(b"\n", 1)
            name, equals, text = head.partition(b"=")
            if not equals:
                length = int.from_bytes(datagram[:8], "little")
                text, datagram = datagram[8 : 8 + length], datagram[8 + length + 1 :]
            fields[decode(name)] = decode(text)
        return fields

    def close(self) -> None:
        self.socket.close()


# For a shell script: sets PROGRAM to the process id of the program, which leads its session.
FIND_PROGRAM = 'PROGRAM=$(cut -d " " -f 6 /proc/self/stat)\n'


class Run:
    """The program while it runs in the host."""

    def __init__(self, process: subprocess.Popen[bytes]) -> None:
        self.process = process

    def wait_for_login_monitor(self, patience: float = 20) -> None:
        """Return once the program has begun to watch for users who log in."""
        deadline = time.monotonic() + patience
        while not self._watches_files():
            if time.monotonic() > deadline or self.process.poll() is not None:
                raise AssertionError(f"no login monitor was made: {self.finish(timeout=1)}")
            time.sleep(0.01)

    def _watches_files(self) -> bool:
        descriptors = Path(f"/proc/{self.process.pid}/fdinfo")
        try:
            return any("inotify wd:" in fd.read_text() for fd in descriptors.iterdir())
        except OSError:
            return False

    def processor_time(self) -> float:
        """The seconds of processor time that the program has used."""
        stat = Path(f"/proc/{self.process.pid}/stat").read_text(encoding="utf-8")
        user, system = stat.rpartition(")")[2].split()[11:13]
        return (int(user) + int(system)) / os.sysconf("SC_CLK_TCK")

    def finish(self, timeout: float = 60) -> Result:
        try:
            stdout, stderr = self.process.communicate(timeout=timeout * SLOWDOWN)
        except subprocess.TimeoutExpired:
            self.kill()
            raise
        return Result(self.process.returncode, decode(stdout or b""), decode(stderr or b""))

    def kill(self) -> None:
        """End the program, and whatever it started, if it still runs."""
        if self.process.poll() is None:
            os.killpg(self.process.pid, signal.SIGKILL)
            self.process.communicate()


class Host:
    """The private host. Paths given to its methods are the host's own."""

    def __init__(self) -> None:
        self.binary = setting("CRADLE_BINARY")
        self.root = Path(tempfile.mkdtemp(prefix="cgc-", dir="/tmp"))
        self.runs: list[Run] = []
        self.journals: list[Journal] = []
        self._lay_out()

    def _lay_out(self) -> None:
        self.root.chmod(0o755)
        for path in ("dev", "etc", "proc", "run/systemd/journal", "run/systemd/seats", "usr"):
            self.directory(path)
        for path in ("run/systemd/sessions", "run/systemd/users", "tmp"):
            self.directory(path)
        for path in ("bin", "lib", "lib64", "sbin"):
            self.link(path, f"usr/{path}")
        self.file("etc/nsswitch.conf", "passwd: files\ngroup: files\n")
        self.file("etc/passwd")
        self.file("etc/group")
        binds = [("/usr", "usr"), ("/proc", "proc"), ("/dev/null", "dev/null")]
        binds += [("/dev/full", "dev/full"), ("/dev/zero", "dev/zero")]
        build = setting("CRADLE_BUILD_DIR")
        binds.append((build, build))
        for source, target in binds:
            if os.path.isdir(source):
                self.directory(target)
            else:
                self.file(target)
        table = (f"{field(s)} {field(str(self.path(t)))} none rbind" for s, t in binds)
        self.mounts = self.root.with_suffix(".mounts")
        self.mounts.write_text("".join(f"{line} 0 0\n" for line in table))

    # --- what stands on the host

    def path(self, path: str) -> Path:
        """Where a path of the host lies outside of it."""
        return self.root / path.lstrip("/")

    def directory(self, path: str) -> None:
        self.path(path).mkdir(parents=True, exist_ok=True)

    def file(self, path: str, content: str | bytes = "", mode: int = 0o644) -> None:
        place = self.path(path)
        place.parent.mkdir(parents=True, exist_ok=True)
        place.write_bytes(encode(content))
        place.chmod(mode)

    def script(self, path: str, body: str) -> None:
        """An executable shell script."""
        self.file(path, "#!/bin/sh\n" + body, mode=0o755)

    def link(self, path: str, target: str) -> None:
        self.path(path).parent.mkdir(parents=True, exist_ok=True)
        self.path(path).symlink_to(target)

    def conf(self, text: str | bytes, path: str = "/c/10-base.conf") -> None:
        """A configuration file, by default the only one of the directory /c."""
        self.file(path, text)

    def user(self, name: str, uid: int, home: str) -> None:
        """An entry of the user database."""
        with self.path("etc/passwd").open("a", encoding="utf-8") as passwd:
            passwd.write(f"{name}:x:{uid}:{uid}::{home}:/bin/sh\n")
        with self.path("etc/group").open("a", encoding="utf-8") as group:
            group.write(f"{name}:x:{uid}:\n")

    def seat(self, **fields: str) -> None:
        """What the login manager says of seat0, for example ACTIVE="c1", ACTIVE_UID="1000"."""
        text = "".join(f"{name}={value}\n" for name, value in fields.items())
        self.file("run/systemd/seats/.seat0", text)
        self.path("run/systemd/seats/.seat0").rename(self.path("run/systemd/seats/seat0"))

    def announce_login(self, uid: int) -> None:
        """Let the login manager report a change of a user, which wakes every login monitor."""
        self.file(f"run/systemd/users/.{uid}", "STATE=active\n")
        self.path(f"run/systemd/users/.{uid}").rename(self.path(f"run/systemd/users/{uid}"))

    def journal(self) -> Journal:
        """A journal that takes messages from now on."""
        journal = Journal(self.path("run/systemd/journal/socket"))
        self.journals.append(journal)
        return journal

    def dconf(self, config_home: str, keyfile: str) -> None:
        """A dconf user database with the keys of the key file."""
        self.directory(f"{config_home}/dconf")
        with tempfile.TemporaryDirectory(prefix="cgc-keys-") as keys:
            Path(keys, "keys").write_text(keyfile, encoding="utf-8")
            database = str(self.path(f"{config_home}/dconf/user"))
            subprocess.run(["dconf", "compile", database, keys], check=True)

    def library(self, file: Path, without: str = "") -> dict[str, str]:
        """Install a library, one of its functions renamed when asked for.

        Returns the environment in which it is found.
        """
        content = file.read_bytes()
        if without:
            name = b"\0" + encode(without) + b"\0"
            assert name in content, f"{file} has no {without}"
            content = content.replace(name, b"\0_" + name[2:])
        self.file(f"opt/lib/{file.name}", content)
        return {"LD_LIBRARY_PATH": "/opt/lib"}

    def stub(self, name: str, without: str = "") -> dict[str, str]:
        """Install a stub library."""
        return self.library(Path(setting("CRADLE_STUB_DIR"), name), without)

    def android_properties(self) -> dict[str, str]:
        """Install the stub property library."""
        return self.stub("libandroid-properties.so.1")

    # --- what the program left there

    def read(self, path: str = "/out.conf") -> str:
        return decode(self.path(path).read_bytes())

    def exists(self, path: str = "/out.conf") -> bool:
        return self.path(path).exists()

    def mode(self, path: str = "/out.conf") -> int:
        return self.path(path).stat().st_mode & 0o7777

    def trace(self) -> list[str]:
        """The system calls of the last traced run, one a line.

        That a program which counts its coverage writes the counts in the end is left out.
        """
        return [line for line in self.read("/trace").splitlines() if ".gcda" not in line]

    # --- running

    def start(
        self,
        *arguments: str,
        env: Mapping[str, str] = {},
        program: str = "",
        redirect: str = "",
        umask: int = 0o022,
        powerless: bool = False,
        memcheck: bool = True,
        strace: Sequence[str] = (),
    ) -> Run:
        """Start the program, whose whole environment is PATH and what env says.

        redirect is shell syntax ("2>&-"). A powerless program has no capability, so that the
        modes of files bind it though it is root. With options for strace the run is traced.
        Valgrind keeps away from traced runs and from those without memcheck, which are for tests
        of what it does in another way itself.
        """
        environment = {"PATH": "/usr/bin:/bin", **env}
        environment |= {n: os.environ[n] for n in INSTRUMENTATION if n in os.environ}
        command = ["/usr/sbin/chroot", str(self.root)]
        if powerless:
            command += ["/usr/bin/setpriv", "--bounding-set=-all", "--inh-caps=-all"]
        if strace:
            # The leak check traces the program itself, which only one tracer can do.
            options = [environment.get("ASAN_OPTIONS", ""), "detect_leaks=0"]
            environment["ASAN_OPTIONS"] = ":".join(filter(None, options))
        command += ["/usr/bin/env", "-i", *(f"{n}={v}" for n, v in environment.items())]
        if strace:
            command += ["/usr/bin/strace", "-o", "/trace", "-s", "4096", *strace]
        program = program or self.binary
        if Path(program).parent == Path(self.binary).parent and memcheck and not strace:
            command += self._memcheck()
        command += [program, *arguments]
        namespace = ["/usr/bin/unshare", "--mount"]
        if os.geteuid() != 0:
            namespace += ["--user", "--map-root-user"]
        shell = f'/bin/mount --all --fstab "$0" && umask {umask:o} && exec "$@" {redirect}'
        process = subprocess.Popen(
            [*namespace, "/bin/sh", "-c", shell, str(self.mounts), *map(encode, command)],
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            env={},
            start_new_session=True,
        )
        run = Run(process)
        self.runs.append(run)
        return run

    def _memcheck(self) -> list[str]:
        """What stands before the program so that valgrind runs it, if it shall."""
        reports = os.environ.get("CRADLE_VALGRIND")
        if not reports:
            return []
        return [*MEMCHECK, f"--log-file={reports}/{self.root.name}.{len(self.runs)}"]

    def run(self, *arguments: str, timeout: float = 60, **options: Any) -> Result:
        """Run the program to its end; the options are those of start."""
        return self.start(*arguments, **options).finish(timeout)

    def generate(self, *arguments: str, **options: Any) -> Result:
        """Generate /out.conf for alice from the directory /c and those of the arguments."""
        fixed = ("--user-id", "1000", "--config", "/c")
        return self.run(*fixed, *arguments, "/out.conf", **options)

    def close(self) -> None:
        """Remove the host. Nothing is removed while anything is mounted in the tree."""
        for run in self.runs:
            run.kill()
        for journal in self.journals:
            journal.close()
        if str(self.root) in Path("/proc/self/mountinfo").read_text(encoding="utf-8"):
            raise RuntimeError(f"{self.root} holds mounts and is left as it is")
        self.mounts.unlink()
        shutil.rmtree(self.root)
