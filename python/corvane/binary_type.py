"""The type of a binary's phase behaviour, after van Konynenburg and Scott."""

from __future__ import annotations

import itertools
from typing import TYPE_CHECKING, Any, NamedTuple, Sequence

from ._numpy import np

if TYPE_CHECKING:
    from .mixture_results import AzeotropicLine, CriticalLine, ThreePhaseLine

_ALIKE = 1e-6  # ends of lines are exact: two phases are the same there


class BinaryType(NamedTuple):
    """What a binary does, by van Konynenburg and Scott (Phil. Trans. R. Soc. A 298 (1980) 495).

    ``type``: I one critical line from pure to pure component; II beside it one of two liquids, from an upper critical end
    point on; III the line of the heavier component goes to high pressures, that of the other ends where three phases do;
    IV three lines of three phases' ends, V as IV without the liquids that split at low temperatures; VI liquids that split
    between a lower and an upper critical end point. Empty: none of them, and ``why`` says what was found. ``azeotrope``: a
    stable homogeneous azeotrope; ``heteroazeotrope``: a vapour between both liquids.
    """

    type: str
    azeotrope: bool
    heteroazeotrope: bool
    why: str = ""

    def __str__(self) -> str:
        suffix = "H" * self.heteroazeotrope + "A" * self.azeotrope
        return (self.type or "?") + (f"-{suffix}" if suffix else "")


def classify(critical: Sequence[CriticalLine], three_phase: Sequence[ThreePhaseLine],
             azeotropic: Sequence[AzeotropicLine]) -> BinaryType:  # fmt: skip
    """The type from all stable critical lines, lines of three phases and azeotropic lines of a binary."""
    ends = sorted(tuple(sorted(_ends(line))) for line in critical)
    loops = sorted((_merging(line, 0), _merging(line, -1)) for line in three_phase)
    # Where the third phase is a mere trace, a line comes in pieces; its last piece tells.
    known = [loop for loop in loops if loop != ("open", "open")]
    kind = _kind_of(ends, known, len(loops) > len(known))
    hetero = any(_between(line) for line in three_phase)
    if kind:
        return BinaryType(kind, bool(azeotropic), hetero)
    found = "; ".join([f"critical lines {ends}", f"lines of three phases {loops}"])
    return BinaryType("", bool(azeotropic), hetero, found.replace("'", ""))


def _kind_of(ends: list[tuple[str, ...]], loops: list[tuple[str, str]], pieces: bool) -> str:
    """Ends of critical lines (pure 0, pure 1, end point, pressure …), and at which two phases become alike at the lower and
    the upper end of every line of three phases: the liquids, or a liquid and the vapour."""
    pure = [e for e in ends if e[-1].startswith("pure")]
    others = [e for e in ends if e not in pure]
    # Two liquids: where the line comes to pressures below that of a vapour, its end point is there.
    liquids = len(others) == 1 and others[0] in (("end point", "pressure"), ("pressure", "tension"))
    if pure == [("pure 0", "pure 1")]:
        if not loops and not pieces:
            return "I" if not others else "II" if others == [("pressure", "tension")] else ""
        if loops == [("open", "liquids")] and (liquids or not others):
            return "II"
        return "VI" if loops == [("liquids", "liquids")] and not pieces else ""
    if len(pure) != 2 or pure[0][1] == pure[1][1]:
        return ""
    # End points imply lines of three phases that are too short or too cold for the search.
    to = sorted(e[0] for e in pure)
    if to == ["end point", "pressure"] and set(loops) <= {("open", "vapour")} and not others:
        return "III"
    if to == ["end point", "end point"] and set(loops) <= {("liquids", "vapour"), ("open", "liquids")}:
        if liquids or (not others and ("open", "liquids") in loops):
            return "IV"
        return "V" if not others and not pieces else ""
    return ""


def _ends(line: CriticalLine) -> list[str]:
    words = {"a pure": "pure", "a critical end": "end point", "the highest pressure": "pressure",
             "the lowest": "cold", "a pressure": "tension"}  # fmt: skip
    found = []
    for text, x in ((line.begin, line.x[0, 0]), (line.end, line.x[-1, 0])):
        kind = next((short for start, short in words.items() if text.startswith(start)), "open")
        found.append(f"pure {0 if x > 0.5 else 1}" if kind == "pure" else kind)
    return found


def _phases(line: ThreePhaseLine) -> tuple[Any, Any]:
    """x and rho of two liquids and the vapour at each point. The lightest phase comes last in a line: that is the vapour where it
    is cold, but near its critical point a heavy fluid (krypton, xenon) sinks below a light liquid. So the phases are followed from
    the coldest point on."""
    points = np.stack([line.x, np.log(line.rho)], axis=1)
    columns = np.tile(np.arange(3), (len(points), 1))
    cold_first = range(len(points)) if line.T[0] <= line.T[-1] else range(len(points) - 1, -1, -1)
    for before, n in itertools.pairwise(cold_first):
        last = points[before][:, columns[before]]
        columns[n] = min(itertools.permutations(range(3)), key=lambda p: float(np.abs(points[n][:, p] - last).sum()))
    return np.take_along_axis(line.x, columns, axis=1), np.take_along_axis(line.rho, columns, axis=1)


def _merging(line: ThreePhaseLine, k: int) -> str:
    """At an end of a line of three phases: "liquids" or "vapour" (and a liquid) are alike, or it is "open"."""
    x, rho = (v[k] for v in _phases(line))

    def alike(i: int, j: int) -> bool:
        return bool(abs(x[i] - x[j]) < _ALIKE and abs(rho[i] / rho[j] - 1.0) < _ALIKE)

    if alike(0, 1):
        return "liquids"
    return "vapour" if alike(1, 2) or alike(0, 2) else "open"


def _between(line: ThreePhaseLine) -> bool:
    x, y, vapour = _phases(line)[0].T
    return bool(np.any((vapour > np.minimum(x, y) + _ALIKE) & (vapour < np.maximum(x, y) - _ALIKE)))


def of(mixture: Any, p_max: float) -> BinaryType:
    return classify(mixture.critical_lines(p_max=p_max), mixture.three_phase_lines(p_max=p_max),
                    mixture.azeotropic_lines(p_max=p_max))  # fmt: skip
