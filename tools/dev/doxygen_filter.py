#!/usr/bin/env python3
"""Doxygen's INPUT_FILTER for headers: converts plain comments to documentation comments, line by line.

A comment at the file's head documents the file, a trailing comment its line, any other comment the declaration that
follows. "// --- title ---" starts a group of declarations; text indented by four or more spaces is a code listing."""

import re
import sys
from pathlib import Path

TRAILING = re.compile(r"""^((?:[^"/]|"(?:[^"\\]|\\.)*"|/(?!/))*\S)\s+//\s?(.*)$""")


def escaped(text: str) -> str:
    return re.sub(r"([\\@&$#<>%\"])", r"\\\1", text)


def filtered(lines: list[str]) -> list[str]:
    out: list[str] = []
    in_head, in_group, in_listing = True, False, False
    banner = ""  # the title of a group, until it is complete
    for line in lines:
        comment = re.match(r"^(\s*)//( ?)(.*)$", line)
        if banner or line.startswith("// --- "):
            banner = f"{banner} {line.removeprefix('//').strip()}".strip()
            if not banner.endswith("---") or banner == "---":
                out.append("")
                continue
            title = escaped(banner.strip("- "))
            out.append(f"{'/** @} */ ' if in_group else ''}/** \\name {title[:1].upper()}{title[1:]} */ /** @{{ */")
            banner, in_group = "", True
        elif in_head and line == "#pragma once":
            out.append("/// \\file")
            in_head = False
        elif comment:
            indent, _, text = comment.groups()
            is_listing = text.startswith("    ")
            if is_listing or (in_listing and text):
                if not in_listing:
                    out[-1] = indent + "/// \\code{.cpp}"  # the empty line before it
                in_listing = is_listing
                out.append(f"{indent}/// {text}")
            elif in_listing:
                out.append(indent + "/// \\endcode")
                in_listing = False
            else:
                out.append(f"{indent}/// {escaped(text)}".rstrip())
        elif (match := TRAILING.match(line)) and not line.startswith("#include"):
            code, text = match.groups()
            out.append(f"{code} ///< {escaped(text)}" if text else code)
        else:
            out.append(line)
    return [*out, "/** @} */"] if in_group else out


def main() -> None:
    path = Path(sys.argv[1])
    text = path.read_text(encoding="utf-8")
    print("\n".join(filtered(text.splitlines())) if path.suffix == ".h" else text)


if __name__ == "__main__":
    main()
