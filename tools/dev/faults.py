#!/usr/bin/env python3
"""Fault injection: makes every system call of the program on its own files fail once.

  faults.py RUN_FOLDER ERRORS SCREEN...
  faults.py --game ORGANISATION/ID RUN_FOLDER ERRORS SCREEN...   for a game with its files in the user's folder

RUN_FOLDER is that of a build; ERRORS are names such as EIO,ENOSPC. For each screen the program first runs under strace,
which lists its calls on files in its folder: assets, configuration, captures, log. It then runs again for each call and
error, from the same state, with strace injecting the error into that call. Expected of each run: exit code 0 or 1, with
a reason in the log if it is 1; no hang; the settings as before or as saved; no temporary file; no truncated capture
reported as saved. lseek is excluded, because most calls are lseek.

Prints a line per screen and one per finding. Exit code: 1 with findings, 77 if ptrace is not permitted.
"""

import collections
import concurrent.futures
import os
import pathlib
import queue
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

# The program's file, the base name of its settings and log, and their folder, relative to the run folder.
Program = collections.namedtuple("Program", "file id home")
PROGRAM = Program("LumarindEngine", "lumarind-engine", ".")
CAPTURE = "captures/CAPTURE"  # placeholder for the capture, whose name contains the time
FOLDER = "FOLDER"  # placeholder for the run folder's path
TIMEOUT_S = 60
WORKERS = 4 * (os.cpu_count() or 1)  # most of a run is spent waiting for the sound device
NOT_TRACED = 77

# Formatted differently from the program's output, so that saving can be detected.
SETTINGS_BEFORE = """; written by hand
[window]
width = 320
height = 240
[graphics]
ui_scale = 1
vsync_enable = false
show_frame_time_graph = true
[capture]
format = {format}
[input]
jump = Space
[audio]
music_volume = 0.25
"""

Call = collections.namedtuple("Call", "name path number")  # the number-th call of this name on this path


class Finding(Exception):
    pass


def environment(folder):
    """Dummy drivers; user data in the folder; sanitizers exit with a code different from that of a failed start."""
    inherited = {name: os.environ[name] for name in ("PATH", "LD_LIBRARY_PATH") if name in os.environ}
    return inherited | {
        "SDL_VIDEO_DRIVER": "dummy", "SDL_AUDIO_DRIVER": "dummy", "SDL_RENDER_DRIVER": "software",
        "HOME": str(folder), "XDG_DATA_HOME": str(folder / "data"), "TZ": "UTC", "LC_ALL": "C.UTF-8",
        "ASAN_OPTIONS": "detect_leaks=0:exitcode=99", "UBSAN_OPTIONS": "halt_on_error=1:exitcode=99",
    }


# --- one run ---


class Folder:
    """A separate run folder, reset before each run."""

    def __init__(self, parent, build, picture_format):
        self.path = pathlib.Path(tempfile.mkdtemp(dir=parent))
        shutil.copy(build / PROGRAM.file, self.path)
        shutil.copytree(build / "assets", self.path / "assets")
        self.home = self.path / PROGRAM.home
        self.settings = self.home / f"config/{PROGRAM.id}.ini"
        self.before = SETTINGS_BEFORE.format(format=picture_format)

    def reset(self):
        for name in ("captures", "config", "data"):
            shutil.rmtree(self.path / name, ignore_errors=True)
        for name in (f"{PROGRAM.id}.log", "trace"):
            (self.path / name).unlink(missing_ok=True)
        (self.home / "config").mkdir(parents=True)
        self.settings.write_text(self.before)
        (self.home / "config/gamecontrollerdb.txt").write_text("# none\n")
        (self.path / "data/lumarind").mkdir(parents=True, exist_ok=True)

    def run(self, screen, strace_options):
        """Returns exit code, standard error and trace."""
        self.reset()
        command = ["strace", "-f", "-y", "--quiet=path-resolution", "--kill-on-exit", "-o", "trace", *strace_options]
        command += [f"./{PROGRAM.file}", "--screen", screen, "--capture-at", "2", "--quit-at", "3"]
        process = subprocess.Popen(
            command, cwd=self.path, env=environment(self.path), start_new_session=True, stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
        try:
            errors = process.communicate(timeout=TIMEOUT_S)[1]
        except subprocess.TimeoutExpired as late:
            os.killpg(process.pid, signal.SIGKILL)
            process.communicate()
            raise Finding(f"still running after {TIMEOUT_S} s") from late
        trace = self.path / "trace"
        return process.returncode, errors.decode(errors="replace"), trace.read_text() if trace.exists() else ""

    def capture_paths(self):
        """Yields possible names of a capture taken in the next seconds, relative and absolute, for strace."""
        now = int(time.time())
        for second in range(now, now + 15):
            stamp = time.strftime("%Y%m%d-%H%M%S", time.gmtime(second))
            for suffix in ("png", "jpg"):
                name = f"captures/capture-{stamp}-000002.{suffix}"
                yield name
                yield str(self.home / name)


# --- calls on the program's files ---

CALL_LINE = re.compile(r"^\d+ +(\w+)\((.*)")
FIRST_DESCRIPTOR = re.compile(r"^\d+<([^>]*)>")
FIRST_TEXT = re.compile(r'"([^"]*)"')
WORKING_FOLDER = re.compile(r"^AT_FDCWD<[^>]*>, ")


def own_file(folder, text):
    """Returns the path relative to the folder if it is one of the program's own files, else None."""
    if not text or re.match(r"\w+:", text):  # "socket:[1]", "pipe:[2]"
        return None
    path = os.path.relpath(os.path.join(folder, text), folder)
    if path.startswith("..") or path in (".", PROGRAM.file, "trace"):
        return None
    return CAPTURE if os.path.dirname(path).endswith("captures") else path


def list_calls(folder, trace):
    """Returns all calls on the program's files, and the spellings of each path. A descriptor is traced as "3</path>"; the
    second line of a call that was interrupted by another thread is not counted."""
    counts = collections.Counter()
    spellings = collections.defaultdict(set)
    for line in trace.splitlines():
        call = CALL_LINE.match(line)
        if not call or call[1] == "lseek":
            continue
        name, arguments = call[1], WORKING_FOLDER.sub("", call[2])
        found = FIRST_DESCRIPTOR.match(arguments) or (name in PATH_CALLS and FIRST_TEXT.search(arguments))
        path = own_file(folder, found[1]) if found else None
        if path:
            counts[(name, path)] += 1
            spellings[path].add(found[1].replace(str(folder), FOLDER))
    calls = [Call(name, path, n + 1) for (name, path), count in counts.items() for n in range(count)]
    return calls, spellings


PATH_CALLS = frozenset(
    "access chmod creat faccessat faccessat2 fchmodat fchmodat2 lstat mkdir mkdirat newfstatat open openat readlink "
    "readlinkat rename renameat renameat2 rmdir stat statx symlink truncate unlink unlinkat utimensat".split())


# --- checking a run ---


def settings(text):
    """Parses settings; returns the values by section and key."""
    section, found = "", {}
    for line in text.splitlines():
        if line.startswith("["):
            section = line
        elif "=" in line and not line.startswith(";"):
            key, value = line.split("=", 1)
            found[(section, key.strip())] = value.strip()
    return found


def check_files(folder, saved):
    present = folder.settings.read_text() if folder.settings.is_file() else None
    if present is None or (present != folder.before and settings(present) != settings(saved)):
        raise Finding("the settings are neither as before nor as saved")
    # The log is in the run folder if its home cannot be created.
    run_files = {PROGRAM.file, "assets", "data", "trace", f"{PROGRAM.id}.log"}
    home_files = {"captures", "config", f"{PROGRAM.id}.log"}
    config_files = {folder.settings.name, "gamecontrollerdb.txt"}
    allowed = {folder.path: run_files, folder.home: home_files, folder.home / "config": config_files}
    if folder.home == folder.path:
        allowed[folder.path] = run_files | home_files
    for place, names in allowed.items():
        for extra in {entry.name for entry in place.iterdir()} - names:
            raise Finding(f"a file was left behind: {place}/{extra}")


def check_capture(folder, errors):
    for name in re.findall(r"\[CAPTURE\] Saved: (\S+)", errors):
        picture = folder.path / name  # which may be absolute
        end = picture.read_bytes()[-12:] if picture.is_file() else b""
        if b"IEND" not in end and not end.endswith(b"\xff\xd9"):
            raise Finding(f"a truncated capture was reported as saved: {name}")


def check_run(folder, saved, code, errors):
    if code not in (0, 1):
        raise Finding(f"exit code {code}: {errors.strip()[-2000:]}")
    for line in errors.splitlines():
        if "Sanitizer" in line or "runtime error" in line:
            raise Finding(line)
        if line.startswith("ERROR: ") and line.endswith(": "):
            raise Finding(f"an error without a reason: {line}")
    if code == 1 and not re.search(r"^ERROR: \[", errors, re.MULTILINE):
        raise Finding("the start failed without a reason in the log")
    check_files(folder, saved)
    check_capture(folder, errors)


# --- a screen ---


class Screen:
    def __init__(self, name, parent, build, picture_format):
        self.name, self.findings = name, []
        self.codes = collections.Counter()
        self.folders = queue.Queue()
        for _ in range(WORKERS):
            self.folders.put(Folder(parent, build, picture_format))
        folder = self.folders.get()
        code, errors, trace = folder.run(name, [])
        if code != 0:
            raise SystemExit(f"faults: {name} fails without a fault: {errors}")
        self.saved = folder.settings.read_text()
        self.calls, self.spellings = list_calls(folder.path, trace)
        self.folders.put(folder)

    def fail(self, call, error):
        """Runs once with this call failing."""
        folder = self.folders.get()
        paths = {path.replace(FOLDER, str(folder.path)) for path in self.spellings[call.path]}
        if call.path == CAPTURE:
            paths = folder.capture_paths()
        # Traces only the failing call: a kernel filter lets all others run at full speed.
        options = ["--seccomp-bpf", f"--trace={call.name}", f"--inject={call.name}:error={error}:when={call.number}"]
        options += [f"--trace-path={path}" for path in paths]
        try:
            code, errors, trace = folder.run(self.name, options)
            self.codes[code] += 1
            check_run(folder, self.saved, code, errors)
            if "(INJECTED)" not in trace:
                raise Finding("the call did not occur again")
        except Finding as finding:
            self.findings.append(f"  {error} of {call.name} {call.number} on {call.path}: {finding}")
        finally:
            self.folders.put(folder)

    def fail_all(self, errors):
        start = time.monotonic()
        with concurrent.futures.ThreadPoolExecutor(WORKERS) as pool:
            runs = [pool.submit(self.fail, call, error) for call in self.calls for error in errors]
            for run in runs:
                run.result()
        print(f"{self.name:<16} {len(self.calls):>5} calls {len(runs):>6} runs {self.codes[0]:>6} exit 0 "
              f"{self.codes[1]:>6} exit 1 {len(self.findings):>4} findings {time.monotonic() - start:>5.0f} s",
              flush=True)
        for finding in sorted(self.findings):
            print(finding, flush=True)


def may_trace():
    try:
        return subprocess.run(["strace", "-o", "/dev/null", "true"], check=False, capture_output=True).returncode == 0
    except FileNotFoundError:
        return False


def main():
    global PROGRAM  # constant from here on
    arguments = sys.argv[1:]
    if arguments[0] == "--game":
        name = arguments[1].split("/")[1]
        PROGRAM = Program(name, name, f"data/{arguments[1]}")
        arguments = arguments[2:]
    build, errors, screens = pathlib.Path(arguments[0]), arguments[1].split(","), arguments[2:]
    if not may_trace():
        print("faults: ptrace is not permitted here", file=sys.stderr)
        return NOT_TRACED
    memory = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None  # in memory if possible
    findings = 0
    for i, name in enumerate(screens):
        with tempfile.TemporaryDirectory(dir=memory, prefix="faults-") as parent:
            screen = Screen(name, parent, build, "jpg" if i % 2 else "png")
            screen.fail_all(errors)
            findings += len(screen.findings)
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
