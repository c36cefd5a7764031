#!/usr/bin/env python3
"""Generates the reference of the public headers in build/docs/html with Doxygen. Called by ./dev docs, inside the build
environment, with the release preset configured. Fails on a warning and for a header without a page."""

import shutil
import subprocess
import sys

from check_includes import PUBLIC, SRC

TOP = SRC.parent
OUT = TOP / "build/docs"


def main() -> int:
    shutil.rmtree(OUT, ignore_errors=True)
    headers = {f"{name}.h": SRC / f"{name}.h" for name in sorted(PUBLIC)}
    headers["version.h"] = TOP / "build/release/include/lumarind/version.h"
    for name, path in headers.items():  # with the paths used by games
        staged = OUT / "include/lumarind" / name
        staged.parent.mkdir(parents=True, exist_ok=True)
        shutil.copyfile(path, staged)
    if code := subprocess.run(["doxygen", "docs/Doxyfile"], cwd=TOP, check=False).returncode:
        return code
    files = (OUT / "html/files.html").read_text(encoding="utf-8")
    missing = [name for name in headers if f">{name.split('/')[-1]}</a>" not in files]
    if missing:
        print("not in the reference:", *missing, file=sys.stderr)
        return 1
    print(f"{len(headers)} headers: build/docs/html/index.html")
    return 0


if __name__ == "__main__":
    sys.exit(main())
