"""Pen strokes for the UI font: skeleton text in, closed quadratic contours out.

A skeleton is a line of text such as

    44,344 ah 360,T av 676,344 ah 360,B av 44,344 z

The first point starts the stroke, then come segments:

    h X        horizontal line          l X,Y     line in any direction
    v Y        vertical line            z         close the stroke
    ah X,Y     arc that ends running horizontally
    av X,Y     arc that ends running vertically
    ad X,Y D   arc that ends running at D degrees
    wN         pen width factor from here on (a change tapers the stroke)
    kN         squareness of the arcs from here on
    p X,Y ...  a filled polygon instead of a stroke

Ordinates may be named levels ("T", "x+20").  A point may carry a mark that
says how the stroke is cut there: "<" and ">" put the left or right corner of
a level cut on the point, "|" cuts upright, "." cuts square to the stroke.
Diagonals are cut level unless marked.
"""

from __future__ import annotations

import math
import re
from dataclasses import dataclass, field

from fontTools.cu2qu import curve_to_quadratic

CAP = 688  # whole pixels at 16, 32, 48, 64 and 96 px, and so are XH and DESC
XH = 500
ASC = 719
DESC = -188
V = 88  # pen width of upright strokes
H = 84  # ... and of horizontal ones, which look heavier than they are
OV = 8  # overshoot of round strokes
SQUARE = 0.75  # handle length of a superellipse quarter with exponent 2.8

# Upper case: a level or round stroke's centre line; the rest are edges.
LEVELS = {
    "b": H // 2, "B": H // 2 - OV,
    "t": CAP - H // 2, "T": CAP - H // 2 + OV,
    "x": XH - H // 2, "X": XH - H // 2 + OV,
    "c": CAP, "e": XH, "a": ASC, "d": DESC, "D": DESC + H // 2,
}

Point = tuple[float, float]
Segment = tuple[Point, ...]  # two points: a line, more: a quadratic spline
Contour = list[Segment]


@dataclass
class Affine:
    """Scale and shift of a skeleton; the pen itself keeps its width."""

    sx: float = 1.0
    sy: float = 1.0
    dx: float = 0.0
    dy: float = 0.0
    pen: float = 1.0

    def __call__(self, x: float, y: float) -> Point:
        return (self.sx * x + self.dx, self.sy * y + self.dy)

    def then(self, outer: Affine) -> Affine:
        dx, dy = outer(self.dx, self.dy)
        return Affine(self.sx * outer.sx, self.sy * outer.sy, dx, dy, self.pen * outer.pen)


@dataclass
class Node:
    at: Point
    width: float
    cut: str = ""
    into: Point | None = None  # unit tangent on arrival
    out: Point | None = None  # unit tangent on departure
    arc: float = 0.0  # squareness of the arc that leads here, 0 for a line


@dataclass
class Stroke:
    nodes: list[Node] = field(default_factory=list)
    closed: bool = False


def _number(text: str) -> float:
    total = 0.0
    for sign, term in re.findall(r"([+-]?)([\d.]+|[A-Za-z])", text):
        value = LEVELS[term] if term in LEVELS else float(term)
        total += -value if sign == "-" else value
    return total


def _unit(x: float, y: float) -> Point:
    length = math.hypot(x, y)
    return (x / length, y / length)


def _meet(p: Point, d: Point, q: Point, e: Point) -> Point:
    """Where the line through p along d meets the line through q along e."""
    cross = d[0] * e[1] - d[1] * e[0]
    s = ((q[0] - p[0]) * e[1] - (q[1] - p[1]) * e[0]) / cross
    return (p[0] + s * d[0], p[1] + s * d[1])


def _pen(d: Point) -> float:
    return math.hypot(V * d[1], H * d[0])


class _Parser:
    def __init__(self, text: str, place: Affine) -> None:
        self.words = text.split()
        self.place = place
        self.width = place.pen
        self.square = SQUARE
        self.stroke = Stroke()
        self.raw: Point = (0.0, 0.0)  # current point before placement

    def _node(self, x: float, y: float, cut: str = "") -> Node:
        self.raw = (x, y)
        if self.place.sx < 0 and cut in ("<", ">"):
            cut = "<" if cut == ">" else ">"
        node = Node(self.place(x, y), self.width, cut)
        self.stroke.nodes.append(node)
        return node

    def _point(self, word: str) -> tuple[float, float, str]:
        cut = word[0] if word[0] in "<>|." else ""
        x, y = word[len(cut):].split(",")
        return _number(x), _number(y), cut

    def _line(self, x: float, y: float, cut: str = "") -> None:
        last = self.stroke.nodes[-1]
        node = self._node(x, y, cut)
        node.into = last.out = _unit(node.at[0] - last.at[0], node.at[1] - last.at[1])

    def _arc(self, x: float, y: float, end: Point) -> None:
        last = self.stroke.nodes[-1]
        node = self._node(x, y)
        start = last.into or (end[1], end[0])
        corner = _meet(last.at, start, node.at, end)
        last.out = _unit(corner[0] - last.at[0], corner[1] - last.at[1])
        node.into = _unit(node.at[0] - corner[0], node.at[1] - corner[1])
        node.arc = self.square

    def _direction(self, degrees: float) -> Point:
        a = math.radians(degrees)
        return _unit(self.place.sx * math.cos(a), self.place.sy * math.sin(a))

    def parse(self) -> Stroke:
        words = iter(self.words)
        for word in words:
            if word[0] == "w":
                self.width = float(word[1:]) * self.place.pen
            elif word[0] == "k":
                self.square = float(word[1:])
            elif word == "h":
                self._line(_number(next(words)), self.raw[1])
            elif word == "v":
                self._line(self.raw[0], _number(next(words)))
            elif word == "l":
                self._line(*self._point(next(words)))
            elif word in ("ah", "av"):
                x, y, _ = self._point(next(words))
                self._arc(x, y, (1.0, 0.0) if word == "ah" else (0.0, 1.0))
            elif word == "ad":
                x, y, _ = self._point(next(words))
                self._arc(x, y, self._direction(float(next(words))))
            elif word == "z":
                self._close()
            else:
                self._node(*self._point(word))
        return self.stroke

    def _close(self) -> None:
        first, last = self.stroke.nodes[0], self.stroke.nodes[-1]
        self.stroke.closed = True
        if math.dist(first.at, last.at) < 0.01:
            self.stroke.nodes.pop()
            first.into, first.arc = last.into, last.arc
        else:
            first.into = last.out = _unit(first.at[0] - last.at[0], first.at[1] - last.at[1])


def _shift(node: Node, d: Point, side: float) -> Point:
    reach = side * node.width * _pen(d) / 2
    return (node.at[0] - d[1] * reach, node.at[1] + d[0] * reach)


def _edge(node: Node, side: float) -> Point:
    """The point beside a node on one edge of the stroke."""
    d, e = node.into or node.out, node.out or node.into
    p, q = _shift(node, d, side), _shift(node, e, side)
    if abs(d[0] * e[1] - d[1] * e[0]) > 0.02:
        return _meet(p, d, q, e)
    level = min(abs(d[0]), abs(d[1])) > 0.02 and node.cut != "."
    if level and not (node.into and node.out):
        along = (0.0, 1.0) if node.cut == "|" else (1.0, 0.0)
        return _meet(p, d, node.at, along)
    return p


def _arc_edge(a: Node, b: Node, side: float) -> Segment:
    """Cubic beside an arc, shaped so that its middle is at the pen's width."""
    p, q = _edge(a, side), _edge(b, side)
    centre = _meet(a.at, a.out, b.at, b.into)
    corner = _meet(p, a.out, q, b.into)
    k = 0.75 * b.arc
    mid = [(a.at[i] + b.at[i]) / 2 * (1 - k) + centre[i] * k for i in (0, 1)]
    d = _unit(b.at[0] - a.at[0], b.at[1] - a.at[1])
    reach = side * (a.width + b.width) / 2 * _pen(d) / 2
    mid = (mid[0] - d[1] * reach, mid[1] + d[0] * reach)
    # mid - (p+q)/2 = 3/8 (s (corner-p) + t (corner-q)), solved for s and t
    u = [(corner[i] - p[i]) * 0.375 for i in (0, 1)]
    w = [(corner[i] - q[i]) * 0.375 for i in (0, 1)]
    r = [mid[i] - (p[i] + q[i]) / 2 for i in (0, 1)]
    det = u[0] * w[1] - u[1] * w[0]
    s = (r[0] * w[1] - r[1] * w[0]) / det
    t = (u[0] * r[1] - u[1] * r[0]) / det
    s, t = (min(0.94, max(0.45, f)) for f in (s, t))
    one = (p[0] + s * (corner[0] - p[0]), p[1] + s * (corner[1] - p[1]))
    two = (q[0] + t * (corner[0] - q[0]), q[1] + t * (corner[1] - q[1]))
    return (p, one, two, q)


def _quadratics(cubic: Segment) -> list[Segment]:
    spline = curve_to_quadratic(cubic, 0.35, all_quadratic=True)
    offs = spline[1:-1]
    ons = [spline[0]]
    ons += [((p[0] + q[0]) / 2, (p[1] + q[1]) / 2) for p, q in zip(offs, offs[1:])]
    ons.append(spline[-1])
    return [(ons[i], offs[i], ons[i + 1]) for i in range(len(offs))]


def _side(stroke: Stroke, side: float) -> Contour:
    nodes = stroke.nodes
    pairs = list(zip(nodes, nodes[1:]))
    if stroke.closed:
        pairs.append((nodes[-1], nodes[0]))
    out: Contour = []
    for a, b in pairs:
        if b.arc:
            out += _quadratics(_arc_edge(a, b, side))
        else:
            out.append((_edge(a, side), _edge(b, side)))
    return out


def _reversed(contour: Contour) -> Contour:
    return [tuple(reversed(seg)) for seg in reversed(contour)]


def _settle_cuts(stroke: Stroke) -> None:
    """Moves a diagonal's ends so that the marked corner of the cut is on the point."""
    ends = [n for n in (stroke.nodes[0], stroke.nodes[-1]) if n.cut in ("<", ">")]
    targets = [n.at for n in ends]
    for _ in range(12):
        a, b = stroke.nodes[0], stroke.nodes[1]
        a.out = b.into = _unit(b.at[0] - a.at[0], b.at[1] - a.at[1])
        if len(stroke.nodes) > 2:
            a, b = stroke.nodes[-2:]
            a.out = b.into = _unit(b.at[0] - a.at[0], b.at[1] - a.at[1])
        for node, target in zip(ends, targets):
            half = abs(_edge(node, 1)[0] - node.at[0])
            node.at = (target[0] + (half if node.cut == "<" else -half), target[1])


def _polygon(text: str, place: Affine) -> list[Contour]:
    points = []
    for word in text.split()[1:]:
        x, y = word.split(",")
        points.append(place(_number(x), _number(y)))
    area = sum(p[0] * q[1] - q[0] * p[1] for p, q in zip(points, points[1:] + points[:1]))
    if area > 0:
        points.reverse()
    return [list(zip(points, points[1:] + points[:1]))]


def contours(text: str, place: Affine) -> list[Contour]:
    """Closed outlines of one skeleton, filled side to the right of travel."""
    if text.startswith("p "):
        return _polygon(text, place)
    stroke = _Parser(text, place).parse()
    if any(n.cut in ("<", ">") for n in stroke.nodes):
        _settle_cuts(stroke)
    left, right = _side(stroke, 1), _reversed(_side(stroke, -1))
    if stroke.closed:
        return [left, right]
    cap_end = (left[-1][-1], right[0][0])
    cap_start = (right[-1][-1], left[0][0])
    return [left + [cap_end] + right + [cap_start]]
