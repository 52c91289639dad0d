#!/usr/bin/env python3
"""Fails when folders under src/ include each other in a cycle.

Every folder holding sources is one node (platform/ and platform/webengine/ are two); an
include of "folder/file.h" found under src/ is an edge from the including file's folder.
Prints each cycle with one include that makes every edge of it.
"""

import pathlib
import re
import sys

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)


def folder_edges(src):
    edges = {}
    for path in sorted(src.rglob("*")):
        if path.suffix not in (".h", ".cpp"):
            continue
        here = path.parent.relative_to(src).as_posix()
        edges.setdefault(here, {})
        for name in INCLUDE.findall(path.read_text(encoding="utf-8")):
            target = src / name
            if not target.is_file():
                continue
            there = target.parent.relative_to(src).as_posix()
            if there != here:
                witness = f"{path.relative_to(src).as_posix()} includes \"{name}\""
                edges[here].setdefault(there, witness)
    return edges


def strongly_connected(edges):
    """Tarjan's algorithm; returns the components of more than one folder."""
    index, low, stack, on_stack, found = {}, {}, [], set(), []

    def visit(node):
        index[node] = low[node] = len(index)
        stack.append(node)
        on_stack.add(node)
        for succ in edges.get(node, {}):
            if succ not in index:
                visit(succ)
                low[node] = min(low[node], low[succ])
            elif succ in on_stack:
                low[node] = min(low[node], index[succ])
        if low[node] == index[node]:
            component = []
            while True:
                member = stack.pop()
                on_stack.discard(member)
                component.append(member)
                if member == node:
                    break
            if len(component) > 1:
                found.append(sorted(component))

    for node in sorted(edges):
        if node not in index:
            visit(node)
    return found


def main():
    src = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else "src").resolve()
    edges = folder_edges(src)
    cycles = strongly_connected(edges)
    for component in cycles:
        print("include cycle between folders: " + ", ".join(component))
        for here in component:
            for there, witness in sorted(edges[here].items()):
                if there in component:
                    print(f"  {here} -> {there}: {witness}")
    if not cycles:
        print(f"no include cycles between the {len(edges)} folders of {src}")
    return 1 if cycles else 0


if __name__ == "__main__":
    sys.exit(main())
