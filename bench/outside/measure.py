"""Runs all micro-benchmarks and measures the program end to end; prints a table and writes it as JSON.

  measure.py RUN_DIRECTORY JSON_FILE [REGEX]

RUN_DIRECTORY contains the program, lumarind_bench, the bare programs and lumarind_probe.so. REGEX selects rows by name.
The program runs in a temporary working directory, with a generated configuration and a preloaded probe (probe.cpp).
"""

import json
import os
import platform
import re
import statistics
import subprocess
import sys
import tempfile
import time

SCREENS = ["main-menu", "text-demo", "texture-demo", "tilemap-demo", "sprite-demo", "platformer-demo", "gamepad-demo",
           "logical-demo", "input-demo", "audio-demo", "physics-demo"]
STARTS = 20          # of the program and of each bare one, alternately
PACED_SECONDS = 12
WARM_UP_FRAMES = 60  # excluded
COUNTED_FRAMES = 1000
GAME_FOLDER = "lumarind-examples/cinder-keep/config"  # for the example game's settings, in the user data folder
CONFIG = "[graphics]\nvsync_enable = false\nfps_limit = {limit}\n[window]\nwidth = 800\nheight = 450\n"

SOFTWARE = {"SDL_RENDER_DRIVER": "software", "SDL_FRAMEBUFFER_ACCELERATION": "0"}
OPENGL = {"SDL_RENDER_DRIVER": "opengl", "LP_NUM_THREADS": "1"}
RENDERERS = {"software": SOFTWARE, "opengl": OPENGL}
# Frames are measured without a display: SDL's dummy video driver, and the offscreen one for OpenGL.
HEADLESS = {"software": SOFTWARE | {"SDL_VIDEO_DRIVER": "dummy"}, "opengl": OPENGL | {"SDL_VIDEO_DRIVER": "offscreen"}}

GOOGLE_FIELDS = {"name", "family_index", "per_family_instance_index", "run_name", "run_type", "repetitions",
                 "repetition_index", "threads", "iterations", "real_time", "cpu_time", "time_unit", "label"}


class Row:
    def __init__(self, name, value, unit, aim=None):
        self.name, self.value, self.unit, self.aim = name, value, unit, aim

    def missed(self):
        return self.aim is not None and self.value > self.aim


class Run:
    """One run of a program with the probe."""

    def __init__(self, bench, arguments, environment, limit=0):
        with tempfile.TemporaryDirectory() as here:
            os.symlink(os.path.realpath(os.path.join(bench.directory, "assets")), os.path.join(here, "assets"))
            os.mkdir(os.path.join(here, "config"))
            os.makedirs(os.path.join(here, GAME_FOLDER))
            for config in ("config/lumarind-engine.ini", f"{GAME_FOLDER}/cinder-keep.ini"):
                with open(os.path.join(here, config), "w") as file:
                    file.write(CONFIG.format(limit=limit))
            probe_file = os.path.join(here, "probe")
            variables = os.environ | environment | {
                "SDL_AUDIO_DRIVER": "dummy", "LUMARIND_PROBE": probe_file, "XDG_DATA_HOME": here,
                "LD_PRELOAD": os.path.join(bench.directory, "lumarind_probe.so")}
            command = [os.path.join(bench.directory, arguments[0])] + arguments[1:]
            began = time.clock_gettime_ns(time.CLOCK_MONOTONIC)
            with tempfile.TemporaryFile() as errors:
                process = subprocess.Popen(command, cwd=here, env=variables, stdout=subprocess.DEVNULL, stderr=errors)
                _, status, used = os.wait4(process.pid, 0)
                process.returncode = os.waitstatus_to_exitcode(status)
                errors.seek(0)
                if process.returncode != 0 or not os.path.exists(probe_file):
                    sys.exit(f"measure: {' '.join(command)} failed:\n{errors.read().decode()}")
            self.cpu_us = (used.ru_utime + used.ru_stime) * 1e6  # of the whole run, all threads
            self.read(probe_file, began)

    def read(self, probe_file, began):
        self.presents, self.waits, self.memory_kib = [], [], 0
        with open(probe_file) as file:
            for line in file:
                kind, *numbers = line.split()
                numbers = [int(number) for number in numbers]
                if kind == "memory":
                    self.memory_kib = numbers[0]
                else:
                    (self.presents if kind == "present" else self.waits).append(numbers)
        self.start_ms = (self.presents[0][0] - began) / 1e6


def deviations_us(times, period_ns):
    gaps = [later - earlier for earlier, later in zip(times, times[1:])]
    return sorted(abs(gap - period_ns) / 1e3 for gap in gaps[WARM_UP_FRAMES:])


def at(sorted_values, share):
    return sorted_values[min(int(len(sorted_values) * share), len(sorted_values) - 1)]


class Bench:
    def __init__(self, directory, pattern):
        self.directory, self.pattern, self.rows = os.path.abspath(directory), re.compile(pattern), []
        self.machine = {}

    def selects(self, group, kinds):
        """Whether any row of a group is requested: groups are measured completely or not at all."""
        return any(self.pattern.search(f"{group}{kind}") for kind in kinds)

    def add(self, name, value, unit, aim=None):
        if self.pattern.search(name):
            self.rows.append(Row(name, value, unit, aim))

    def log(self, message):
        print(f"measure: {message}", file=sys.stderr, flush=True)

    # --- micro-benchmarks ---

    def run_google_benchmarks(self):
        listed = self.google(["--benchmark_list_tests=true"]).stdout.decode().split("\n")
        selected = [name for name in listed if name and self.pattern.search(name)]
        if not selected:
            return
        self.log(f"{len(selected)} micro-benchmarks")
        with tempfile.NamedTemporaryFile(suffix=".json") as out:
            pattern = "^(" + "|".join(re.escape(name) for name in selected) + ")$"
            self.google(["--benchmark_filter=" + pattern, "--benchmark_out=" + out.name])
            result = json.load(open(out.name))
        for row in result["benchmarks"]:
            if row.get("error_occurred"):
                sys.exit(f"measure: {row['name']} failed: {row['error_message']}")
            if not row.get("skipped"):
                self.add_google_row(row)

    def add_google_row(self, row):
        name = f"{row['name']} {row['label']}" if row.get("label") else row["name"]
        manual = name.split(" ")[0].endswith("/manual_time")  # the benchmark reports its own time
        self.rows.append(Row(name, row["real_time" if manual else "cpu_time"], row["time_unit"]))
        for counter in sorted(row.keys() - GOOGLE_FIELDS):
            per_second = counter.endswith("_per_second")
            unit = f"million {counter.split('_')[0]}/s" if per_second else counter.replace("_", " ")
            self.rows.append(Row(name, row[counter] / (1e6 if per_second else 1), unit))

    def google(self, arguments):
        variables = {"SDL_VIDEO_DRIVER": "dummy"} | os.environ | {"SDL_AUDIO_DRIVER": "dummy"}
        done = subprocess.run([os.path.join(self.directory, "lumarind_bench")] + arguments, cwd=self.directory,
                              env=variables, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        if done.returncode != 0:
            sys.exit("measure: lumarind_bench failed:\n" + done.stderr.decode())
        return done

    # --- the program ---

    def program(self, arguments, environment, limit=0):
        return Run(self, ["LumarindEngine", "--no-config-save"] + arguments, environment, limit)

    def measure_starts(self):
        for renderer, environment in RENDERERS.items():
            kinds = ["", " bare", " share", " bare placed", " share placed"]
            if not self.selects(f"start {renderer}", kinds) and not self.selects(f"memory {renderer}", kinds):
                continue
            self.log(f"{STARTS} starts of the program and of each bare one, {renderer}")
            runs = {"program": [], "bare": [], "bare placed": []}
            for _ in range(STARTS):  # alternately, so that load on the machine affects all equally
                runs["program"].append(self.program(["--quit-at", "60"], environment))
                runs["bare"].append(Run(self, ["lumarind_bare", "60"], environment))
                runs["bare placed"].append(Run(self, ["lumarind_bare", "60", "placed"], environment))
            start = {variant: statistics.median(run.start_ms for run in these) for variant, these in runs.items()}
            memory = {variant: statistics.median(run.memory_kib / 1024 for run in these)
                      for variant, these in runs.items()}
            for what, figures, unit in (("start", start, "ms"), ("memory", memory, "MiB")):
                self.add(f"{what} {renderer}", figures["program"], unit)
                self.add(f"{what} {renderer} bare", figures["bare"], unit)
                self.add(f"{what} {renderer} share", figures["program"] / figures["bare"], "times bare", 1.25)
            # Under X11 each of the two waits for the window's position takes 10 ms, with any window manager.
            self.add(f"start {renderer} bare placed", start["bare placed"], "ms")
            self.add(f"start {renderer} share placed", start["program"] / start["bare placed"], "times bare", 1.25)

    def cpu_per_frame_us(self, run):
        """Difference of two runs of different lengths, because software OpenGL defers drawing, at most to the end of the
        program. `run(frames)` runs the program for that many frames."""
        short, long = run(WARM_UP_FRAMES), run(WARM_UP_FRAMES + COUNTED_FRAMES)
        return (long.cpu_us - short.cpu_us) / COUNTED_FRAMES

    def screen_run(self, screen, environment):
        return lambda frames: self.program(
            ["--window-size", "1280x720", "--screen", screen, "--quit-at", str(frames)], environment)

    def measure_screens(self):
        for renderer, environment in HEADLESS.items():
            if not self.selects(f"frame {renderer} ", SCREENS):
                continue
            self.log(f"frames of every screen, {renderer}")
            for screen in SCREENS:
                frame = self.cpu_per_frame_us(self.screen_run(screen, environment))
                self.add(f"frame {renderer} {screen}", frame, "us CPU")

    def measure_game(self):
        """The example game compared with the demonstration's platformer, alternately."""
        game = os.path.join("..", "examples", "cinder-keep", "cinder-keep")
        for renderer, environment in HEADLESS.items():
            levels = ["level-1", "level-2"]
            if not self.selects(f"game {renderer} ", levels + ["share"]):
                continue
            self.log(f"frames of the example game, {renderer}")
            figures = {name: [] for name in [*levels, "platformer-demo"]}
            for _ in range(3):
                for level in levels:
                    arguments = [game, "--no-config-save", "--window-size", "1280x720", "--screen", level, "--quit-at"]
                    figures[level].append(self.cpu_per_frame_us(
                        lambda frames: Run(self, [*arguments, str(frames)], environment)))
                figures["platformer-demo"].append(self.cpu_per_frame_us(self.screen_run("platformer-demo", environment)))
            frame = {name: statistics.median(these) for name, these in figures.items()}
            for level in levels:
                self.add(f"game {renderer} {level}", frame[level], "us CPU")
            worst = max(frame[level] for level in levels)
            self.add(f"game {renderer} share", worst / frame["platformer-demo"], "times platformer", 1.5)

    def measure_chunks(self):
        for renderer, environment in HEADLESS.items():
            if not self.selects(f"chunks {renderer}", ["", " bare", " share"]):
                continue
            self.log(f"panning compared with a bare loop over the same chunks, {renderer}")
            program, bare = [], []
            for _ in range(5):
                program.append(self.cpu_per_frame_us(self.screen_run("tilemap-demo", environment)))
                bare.append(self.cpu_per_frame_us(
                    lambda frames: Run(self, ["lumarind_bare_chunks", str(frames)], environment)))
            self.add(f"chunks {renderer}", statistics.median(program), "us CPU")
            self.add(f"chunks {renderer} bare", statistics.median(bare), "us CPU")
            self.add(f"chunks {renderer} share", statistics.median(program) / statistics.median(bare), "times bare",
                     0.80)

    def world(self, arguments, environment):
        variables = os.environ | environment | {"SDL_AUDIO_DRIVER": "dummy"}
        done = subprocess.run([os.path.join(self.directory, "lumarind_world")] + arguments, cwd=self.directory,
                              env=variables, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        if done.returncode != 0:
            sys.exit(f"measure: lumarind_world {' '.join(arguments)} failed:\n{done.stderr.decode()}")
        return {name: float(value) for name, value in (line.split() for line in done.stdout.decode().splitlines())}

    def measure_worlds(self):
        for renderer, environment in HEADLESS.items():
            name = f"world {renderer}"
            kinds = [" first", " first CPU", " first small", " frame", " frame small", " share", " p99 share", " memory",
                     " memory small", " memory share"]
            if not self.selects(name, kinds):
                continue
            self.log(f"a map of 1024 x 1024 tiles compared with one of 120 x 34, {renderer}")
            runs = {"large": [], "small": []}
            self.world(["make", "world-large.tmx", "1024", "1024"], environment)
            self.world(["make", "world-small.tmx", "120", "34"], environment)
            for _ in range(5):
                for size, these in runs.items():
                    these.append(self.world(["show", f"world-{size}.tmx", "1000"], environment))
            of = {size: {what: statistics.median(run[what] for run in these) for what in these[0]}
                  for size, these in runs.items()}
            large, small = of["large"], of["small"]
            self.add(f"{name} first", large["first"], "ms", 150)
            self.add(f"{name} first CPU", large["firstcpu"], "ms CPU")
            self.add(f"{name} first small", small["first"], "ms")
            self.add(f"{name} frame", large["median"], "us CPU")
            self.add(f"{name} frame small", small["median"], "us CPU")
            self.add(f"{name} share", large["median"] / small["median"], "times small", 1.10)
            self.add(f"{name} p99 share", large["p99"] / large["median"], "times median", 2)
            self.add(f"{name} memory", large["memory"] / 1024, "MiB")
            self.add(f"{name} memory small", small["memory"] / 1024, "MiB")
            self.add(f"{name} memory share", large["memory"] / small["memory"], "times small",
                     1.10 if renderer == "opengl" else None)

    def measure_pacing(self):
        for limit in (60, 144):
            kinds = [f"{of} {figure}" for of in ("frame", "present") for figure in ("mean", "p50", "p99", "worst")]
            if not self.selects(f"pacing {limit} ", kinds + ["waiting"]):
                continue
            self.log(f"{PACED_SECONDS} s at a limit of {limit} frames per second")
            run = self.program(["--quit-at", str(limit * PACED_SECONDS)], HEADLESS["software"], limit)
            period = 1_000_000_000 // limit
            for what, times in (("frame", [wait[1] for wait in run.waits]), ("present", [p[0] for p in run.presents])):
                off = deviations_us(times, period)
                self.add(f"pacing {limit} {what} mean", statistics.fmean(off), "us off")
                self.add(f"pacing {limit} {what} p50", at(off, 0.5), "us off", 3 if what == "frame" else None)
                self.add(f"pacing {limit} {what} p99", at(off, 0.99), "us off", 100 if what == "frame" else None)
                self.add(f"pacing {limit} {what} worst", off[-1], "us off")
            sampled = [wait for wait in run.waits if wait[2] >= 0]
            share = sum(wait[2] for wait in sampled) / sum(end - begin for begin, end, _ in sampled)
            self.add(f"pacing {limit} waiting", 100 * share, "% of a core", 10)

    def describe_machine(self):
        processor = next((line.split(":")[1].strip() for line in open("/proc/cpuinfo") if line.startswith("model name")),
                         platform.machine())
        sdl = subprocess.run(["pkg-config", "--modversion", "sdl3"], stdout=subprocess.PIPE).stdout.decode().strip()
        self.machine = {"processor": processor, "cores": os.cpu_count(), "kernel": platform.release(), "sdl": sdl,
                        "load before": os.getloadavg()[0], "date": time.strftime("%Y-%m-%d")}

    # --- results ---

    def print_table(self):
        print(f"{self.machine['processor']}, {self.machine['cores']} cores, Linux {self.machine['kernel']}, "
              f"SDL {self.machine['sdl']}, load {self.machine['load before']:.1f} before, {self.machine['date']}")
        width = max(len(row.name) for row in self.rows)
        for row in self.rows:
            aim = "" if row.aim is None else f"aim {row.aim:g}{', MISSED' if row.missed() else ''}"
            print(f"{row.name:<{width}} {row.value:>12.2f} {row.unit:<18} {aim}".rstrip())

    def write_json(self, path):
        rows = [{"name": row.name, "value": row.value, "unit": row.unit, "aim": row.aim} for row in self.rows]
        with open(path, "w") as file:
            json.dump({"machine": self.machine, "rows": rows}, file, indent=1)
            file.write("\n")


def main():
    if len(sys.argv) not in (3, 4):
        sys.exit(__doc__)
    bench = Bench(sys.argv[1], sys.argv[3] if len(sys.argv) == 4 else ".")
    bench.describe_machine()
    bench.measure_pacing()  # first, while the machine is cool and idle
    bench.measure_starts()
    bench.measure_screens()
    bench.measure_game()
    bench.measure_chunks()
    bench.measure_worlds()
    bench.run_google_benchmarks()
    if not bench.rows:
        sys.exit(f"measure: no row's name matches {bench.pattern.pattern}")
    bench.print_table()
    bench.write_json(sys.argv[2])
    print(f"written: {os.path.relpath(sys.argv[2])}")


main()
