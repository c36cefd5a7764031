#!/usr/bin/env python3
"""Uses the library as games do: installed, by add_subdirectory and by FetchContent, each with a game created by
./dev new. Arguments: this checkout and a work folder, in which builds are incremental."""

import os
import re
import shutil
import subprocess
import sys
from pathlib import Path

SOURCE, WORK = Path(sys.argv[1]).resolve(), Path(sys.argv[2]).resolve()
PREFIX, GAME, DATA, EMPTY = WORK / "prefix", WORK / "star-catcher", WORK / "data", WORK / "empty"
WARNINGS = "-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror"
HEADLESS = {"SDL_VIDEO_DRIVER": "dummy", "SDL_AUDIO_DRIVER": "dummy", "SDL_RENDER_DRIVER": "software",
            "XDG_DATA_HOME": str(DATA), "PKG_CONFIG_PATH": str(PREFIX / "lib/pkgconfig")}
ACTIONS = ["left", "right", "up", "down", "jump", "run", "attack", "pause"]
NO_BOX2D = "-DCMAKE_DISABLE_FIND_PACKAGE_box2d=ON"


def run(*arguments: object, code: int = 0, cwd: Path = WORK) -> str:
    """Runs a command, checks its exit code and returns its output."""
    words = [str(argument) for argument in arguments]
    done = subprocess.run(words, cwd=cwd, env=os.environ | HEADLESS, check=False, text=True, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, errors="replace")
    check(done.returncode == code, f"{' '.join(words)}\nexit code {done.returncode}:\n{done.stdout}")
    return done.stdout


def check(ok: bool, message: str) -> None:
    if not ok:
        sys.exit(f"package: {message}")


def build(source: Path, name: str, *options: str, kind: str = "Debug") -> Path:
    """Configures and builds a project in WORK/name, without warnings."""
    folder = WORK / name
    output = run("cmake", "-S", source, "-B", folder, "-G", "Ninja", "--no-warn-unused-cli", "-U", "LUMARIND_*",
                 f"-DCMAKE_BUILD_TYPE={kind}", *options) # resets cached options to their defaults
    check("CMake Warning" not in output, output)
    run("cmake", "--build", folder)
    return folder


def removed(folder: Path) -> Path:
    shutil.rmtree(folder, ignore_errors=True)
    return folder


def files_in(folder: Path) -> list[str]:
    return sorted(path.relative_to(folder).as_posix() for path in folder.rglob("*") if path.is_file())


def play(program: Path) -> None:
    """Runs the game, which must have its own names and actions and store its files in the user's folder."""
    removed(DATA)
    removed(EMPTY).mkdir()
    usage = run(program, "--help", cwd=EMPTY)
    check("Usage: star-catcher [options]" in usage and "config/star-catcher.ini" in usage, usage)
    run(program, "--nonsense", code=1, cwd=EMPTY)
    screens = run(program, "--screen", "nowhere", code=1, cwd=EMPTY)
    check(re.findall(r"^  (\w+)$", screens, re.MULTILINE) == ["title", "play"], screens)
    for screen in ["title", "play"]:
        output = run(program, "--screen", screen, "--capture-at", "5", "--quit-at", "30", cwd=EMPTY)
        check("ERROR" not in output and "WARN" not in output, output)
    user = DATA / "star-catcher"
    captures = [name for name in files_in(user) if re.fullmatch(r"captures/capture-\d+-\d+-000005\.png", name)]
    check(len(captures) >= 1 and files_in(DATA) == sorted(f"star-catcher/{name}" for name in [
        *captures, "config/star-catcher.ini", "star-catcher.log"]), f"the user's files are {files_in(DATA)}")
    settings = (user / "config/star-catcher.ini").read_text()
    check(re.findall(r"(?m)^(\w+)", settings.split("[input]")[1].split("[")[0]) == ACTIONS, settings)
    check(files_in(EMPTY) == [], f"files in the current folder: {files_in(EMPTY)}")


def play_example() -> None:
    """Builds the example game as a separate project and runs each of its screens."""
    folder = build(SOURCE / "examples/cinder-keep", "cinder-keep", f"-DCMAKE_PREFIX_PATH={PREFIX}",
                   f"-DCMAKE_CXX_FLAGS={WARNINGS}")
    for screen in ["title", "level-1", "level-2", "credits"]:
        output = run(folder / "cinder-keep", "--screen", screen, "--quit-at", "30", cwd=EMPTY)
        check("ERROR" not in output and "WARN" not in output, output)


def check_nothing_leaked(folder: Path) -> None:
    """A game's build must not contain any of the engine's programs, links, tests, install rules, flags and folders."""
    targets = run("ninja", "-t", "targets", "all", cwd=folder)
    check(not re.search("LumarindEngine|lumarind_(tests|soak|gallery|program|box2d)", targets), targets)
    compiled = re.search(r"(?m)^.* -c \S+/(main|own-screen)\.cpp$", run("ninja", "-t", "commands", cwd=folder))[0]
    check(not re.search(r" -[Wf]", compiled), compiled)
    paths = map(Path, re.findall(r" (?:-I|-isystem ?)(\S+)", compiled))
    paths = [path for path in paths if path != SOURCE / "tests/package"]
    check(str(folder) in str(paths[0]) and not any((path / name).exists() for path in paths for name in [
        "engine", "config", "core", "input"]), compiled)
    links = [path.name for path in folder.rglob("*") if path.is_symlink()]
    check(set(links) <= {"assets"} and len(links) <= 1, f"links in {folder}: {links}")
    check("Total Tests: 0" in run("ctest", "-N", cwd=folder), "the game's build has tests")
    run("cmake", "--install", folder, "--prefix", removed(WORK / "nothing"))
    others = [name for name in files_in(WORK / "nothing") if not re.search("star.catcher", name)]
    check(not others, f"the game's build installs {others}")


def install() -> None:
    """Installs only the library and relocates it."""
    build(SOURCE, "library", "-DLUMARIND_PROGRAM=OFF", NO_BOX2D, kind="Release")
    run("cmake", "--install", WORK / "library", "--prefix", removed(WORK / "installed"))
    removed(PREFIX)
    (WORK / "installed").rename(PREFIX)
    check(os.listdir(PREFIX / "include") == ["lumarind"], "the include folder contains more than lumarind")
    inside = [name for name in files_in(PREFIX) if re.search(r"_(internal|record)\.h$|engine/(frame|setup)\.h", name)]
    check(not inside, f"internal headers are installed: {inside}")
    for name in files_in(PREFIX):
        check(str(SOURCE).encode() not in (PREFIX / name).read_bytes() or name.endswith(".a"), f"{name} contains the source path")


def check_objects() -> None:
    """Objects of the library must be in its namespace, so that they do not clash with a game's."""
    table = run("readelf", "--wide", "--syms", PREFIX / "lib/liblumarind.a")
    names = re.findall(r" (?:OBJECT|TLS|COMMON) +(?:GLOBAL|WEAK|UNIQUE) +\w+ +(?!UND)\w+ +(\S+)", table)
    check("_ZN8lumarind6engineE" in names, table)
    names = [name for name in names if not name.startswith(("_ZN8lumarind", "DW.ref.__gxx_personality_v0"))]
    check(not names, f"global objects: {names}")


def write_game() -> str:
    """Creates a game with ./dev new, which must not overwrite it; returns main.cpp."""
    removed(GAME)
    run(SOURCE / "dev", "new", GAME)
    output = run(SOURCE / "dev", "new", GAME, code=1)
    check(output.count("\n") == 1 and str(GAME) in output, output)
    for name, limit in {"main.cpp": 70, "CMakeLists.txt": 10}.items():
        check(len((GAME / name).read_text().splitlines()) <= limit, f"{name} has more than {limit} lines")
    return (GAME / "main.cpp").read_text()


def write_own_screen(main: str) -> Path:
    """Applies the changes of docs/first-game.md: inserts a listing before the table of screens, and replaces lines."""
    page = (SOURCE / "docs/first-game.md").read_text().split("## A screen of your own")[1]
    screen, *edits = re.findall(r"```cpp\n(.*?)```", page, re.DOTALL)
    table = "static constexpr GameScreen screens[]"
    main = main.replace(table, f"{screen}\n{table}")
    for edit in edits:
        first_line = edit.splitlines()[0] + "\n"
        check(main.count(first_line) == 1, f"main.cpp does not contain this line exactly once: {first_line}")
        main = main.replace(first_line, edit)
    path = WORK / "own-screen.cpp"
    if not path.exists() or path.read_text() != main:
        path.write_text(main)
    return path


def main() -> None:
    WORK.mkdir(parents=True, exist_ok=True)
    own_screen = write_own_screen(write_game())

    install()
    check_objects()
    for kind in ["Debug", "Release"]:
        folder = build(GAME, f"game-{kind}", f"-DCMAKE_PREFIX_PATH={PREFIX}", f"-DCMAKE_CXX_FLAGS={WARNINGS}", kind=kind)
        play(folder / "star-catcher")
    flags = run("pkg-config", "--static", "--cflags", "--libs", "lumarind >= 0.1").split()
    run("g++", "-std=c++20", GAME / "main.cpp", *flags, "-o", folder / "by-pkg-config")
    play(folder / "by-pkg-config")

    play_example()
    headers = [path.relative_to(PREFIX / "include").as_posix() for path in sorted(PREFIX.rglob("*.h"))]
    folder = build(SOURCE / "tests/package", "foreign-installed", f"-DCMAKE_PREFIX_PATH={PREFIX}", f"-DMAIN={own_screen}",
                   f"-DHEADERS={';'.join(headers)}", f"-DCMAKE_CXX_FLAGS={WARNINGS}")
    output = run(folder / "other_abi", code=1)
    check("built for ABI 99" in output, output)

    check_nothing_leaked(build(GAME, "game-fetched", f"-DLUMARIND_SOURCE={SOURCE}", NO_BOX2D))
    play(WORK / "game-fetched/star-catcher")
    folder = build(SOURCE / "tests/package", "foreign-source", f"-DENGINE={SOURCE}", f"-DMAIN={own_screen}", NO_BOX2D)
    check_nothing_leaked(folder)
    (folder / "assets").symlink_to(GAME / "assets") if not (folder / "assets").exists() else None
    run(folder / "foreign", "--screen", "won", "--quit-at", "30")


if __name__ == "__main__":
    main()
