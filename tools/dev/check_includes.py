#!/usr/bin/env python3
"""Checks the #includes of src: files include only files of their own layer or below, no internal headers of other
folders and no other screens, and headers do not include each other in a cycle."""

import re
import sys
from pathlib import Path

SRC = Path(__file__).resolve().parents[2] / "src"

# From bottom to top. A name is a file without extension, or a folder for all its other files. Layers from PROGRAM_LAYER
# on are the demonstration; those below are the library, whose public headers are included as "lumarind/folder/name.h".
LAYERS = [
    ["core", "replay", "app/args", "engine/game", "engine/game_state", "engine/game_internal", "engine/ui_scale",
     "input/input_actions", "input/input_recording", "diagnostics/capture_format"],
    ["config"],
    ["engine"],
    ["input", "audio", "diagnostics", "toolkit"],
    ["player/player_body", "settings", "engine/setup", "engine/frame"],
    ["app"],
    ["player", "screens/castle", "screens/screen_states"],
    ["screens"],
    ["app/demo_game", "app/main"],
]
PROGRAM_LAYER = 7
LAYER_OF = {name: layer for layer, names in enumerate(LAYERS, 1) for name in names}


def layer_of(file: str) -> int | None:
    """Returns the layer of a file, given relative to src, without extension."""
    return LAYER_OF.get(file, LAYER_OF.get(file.split("/")[0]))


def is_internal(file: str) -> bool:
    return file.endswith(("_internal", "_record"))


def public_headers() -> set[str]:
    """Returns the public headers, as listed in the CMake files."""
    names = set()
    for path in SRC.glob("*/CMakeLists.txt"):
        for listed in re.findall(r"lumarind_sources\(\s*PUBLIC([^)]*?)(?:PRIVATE|\))", path.read_text(encoding="utf-8")):
            names |= {f"{path.parent.name}/{name}" for name in listed.split()}
    return names


PUBLIC = public_headers()


def project_includes(path: Path) -> list[str]:
    found = re.findall(r'^#include "(?:lumarind/)?([^"]+)\.h"', path.read_text(encoding="utf-8"), re.MULTILINE)
    return [name for name in found if (SRC / f"{name}.h").exists()]


def check_prefixes(path: Path) -> list[str]:
    """Public headers are included with the library's prefix, others without; public headers include only public ones."""
    problems = []
    public = path.suffix == ".h" and path.relative_to(SRC).with_suffix("").as_posix() in PUBLIC
    for prefix, name in re.findall(r'^#include "(lumarind/)?([^"]+)\.h"', path.read_text(encoding="utf-8"), re.MULTILINE):
        if not prefix and name in PUBLIC:
            problems.append(f'{name} is public: include it as "lumarind/{name}.h"')
        if public and not prefix:
            problems.append(f"a public header includes {name}, which is internal")
    return problems


def check_include(file: str, included: str) -> str | None:
    """Returns an error message for a forbidden include, or None."""
    folder, other = file.split("/")[0], included.split("/")[0]
    if layer_of(included) > layer_of(file):
        return f"{included} is in layer {layer_of(included)}, above layer {layer_of(file)}"
    if is_internal(included) and folder != other and file != "app/main_loop":
        return f"{included} is internal to {other}"
    if layer_of(file) >= PROGRAM_LAYER > layer_of(included) and included not in PUBLIC:
        return f"{included} is not a public header of the library"
    if folder == other == "screens" and file != included and layer_of(file) == layer_of(included):
        return f"screens must not depend on each other ({included})"
    return None


def find_cycle(graph: dict[str, list[str]]) -> list[str] | None:
    """Returns a cycle of headers as a path, or None."""
    done: set[str] = set()

    def visit(name: str, path: list[str]) -> list[str] | None:
        if name in path:
            return [*path[path.index(name):], name]
        if name in done:
            return None
        for included in graph.get(name, []):
            if cycle := visit(included, [*path, name]):
                return cycle
        done.add(name)
        return None

    for name in graph:
        if cycle := visit(name, []):
            return cycle
    return None


def main() -> int:
    problems = []
    headers = {}
    for path in sorted([*SRC.rglob("*.h"), *SRC.rglob("*.cpp")]):
        file = path.relative_to(SRC).with_suffix("").as_posix()
        if layer_of(file) is None:
            problems.append(f"{file}: is in no layer; add it to LAYERS")
            continue
        included = project_includes(path)
        if path.suffix == ".h":
            headers[file] = included
        problems += [f"{path.relative_to(SRC.parent)}: {problem}" for problem in check_prefixes(path)]
        for name in included:
            if problem := check_include(file, name):
                problems.append(f"{path.relative_to(SRC.parent)}: {problem}")
    if cycle := find_cycle(headers):
        problems.append("headers form a cycle: " + " -> ".join(cycle))
    print("\n".join(problems) or f"{len(headers)} headers in {len(LAYERS)} layers, all includes allowed")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
